// The built-in texts and tables as bytes of the program; read by resources_posix.cpp.

    .section .rodata

    .globl tintline_keywords1
    .globl tintline_keywords1_end
tintline_keywords1:
    .incbin "data/keywords1.txt"
tintline_keywords1_end:

    .globl tintline_keywords2
    .globl tintline_keywords2_end
tintline_keywords2:
    .incbin "data/keywords2.txt"
tintline_keywords2_end:

    .globl tintline_codepages
    .globl tintline_codepages_end
tintline_codepages:
    .incbin "data/codepages.bin"
tintline_codepages_end:

    .section .note.GNU-stack, "", %progbits  // no executable stack
