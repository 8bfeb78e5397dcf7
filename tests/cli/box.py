"""What the tests of the command line stand on: a folder in which the program runs."""
import os
import pathlib
import shutil
import subprocess
import tempfile

from tests.support.checks import ENVIRONMENT, Skip, run_program

TIMEOUT = 60  # seconds for one run


MODULE = """\
Attribute VB_Name = "Kasse"
Private Const Grenze = 0.5 ' in Euro
Public Sub Zeigen(ByVal Wert As Double)
\tMsgBox "Größe: <" & Wert & ">"
End Sub
""".replace("\n", "\r\n").encode("cp1252")
MODULE_LINES = 5

SETTINGS = b"""[TINTLINE]\r
ColProz=a,#123456,#FFFFFF,0,0,0,\r
ColRes=a,#000080,#FFFFFF,0,0,1,\r
ColParms=a,#800000,#FFFFFF,0,0,1,\r
ColRem=a,#008000,#FFFFFF,0,0,1,\r
ColString=a,#808080,#FFFFFF,0,0,1,\r
PreCode=<div>,\r
PostCode=</div>,\r
"""


class Box:
    """A folder of its own for one test, in which the program runs."""

    def __init__(self, command, folder):
        self.command = command
        self.windows = command[-1].lower().endswith((".com", ".exe"))
        self.folder = folder

    def posix_only(self):
        if self.windows:
            raise Skip("not on Windows")

    def put(self, name, content=MODULE):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return name

    def get(self, name):
        return (self.folder / name).read_bytes()

    def names(self, below=""):
        """All files, to see that nothing was left behind."""
        return sorted(path.relative_to(self.folder / below).as_posix()
                      for path in (self.folder / below).rglob("*") if not path.is_dir())

    def run(self, *arguments, code=0, err=(), stdin=b"", command=None, **process):
        """Runs the program, checks exit code and error stream, gives the output.

        `err`: what the error stream must hold, one text a line; () for nothing."""
        streams = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "env": ENVIRONMENT}
        streams["input" if isinstance(stdin, bytes) else "stdin"] = stdin
        done = run_program([*(command or self.command), *arguments], cwd=self.folder,
                           timeout=TIMEOUT, **{**streams, **process})
        told = (done.stderr or b"").decode("utf-8")
        lines = told.splitlines()
        wanted = [err] if isinstance(err, str) else list(err)
        if code == 2:
            assert lines and lines.pop().startswith("Aufruf: tintline "), f"no hint: {told!r}"
        assert done.returncode == code, f"exit code {done.returncode}, not {code}: {told!r}"
        fits = len(lines) == len(wanted) and all(
            line.startswith("tintline: ") and text in line for line, text in zip(lines, wanted))
        assert fits, f"error stream {told!r}, wanted {wanted!r}"
        return done.stdout

    def copy_of_program(self):
        """The command for a copy of the program in the folder "programm"."""
        (self.folder / "programm").mkdir(exist_ok=True)
        return [*self.command[:-1], shutil.copy(self.command[-1], self.folder / "programm")]

    def on_terminal(self, *arguments):
        """Exit code, and what a terminal gets as the error stream."""
        self.posix_only()
        terminal, stream = os.openpty()
        done = subprocess.run([*self.command, *arguments], cwd=self.folder, timeout=TIMEOUT,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=stream,
                              env=ENVIRONMENT)
        os.write(stream, b"END")
        os.close(stream)
        told = b""
        while not told.endswith(b"END"):
            told += os.read(terminal, 4096)
        os.close(terminal)
        return done.returncode, told[:-3].decode("utf-8").replace("\r\n", "\n")


def in_box(function, command):
    """Calls the function with a box of its own."""
    folder = tempfile.mkdtemp(prefix="tintline-cli-")
    try:
        function(Box(command, pathlib.Path(folder)))
    finally:
        shutil.rmtree(folder, ignore_errors=True)
