"""Looks at what ./dev package made as its users do: unpacks, installs, runs, removes.

    python3 -m tests.package.run --native DIR --windows DIR

The folders are those of the builds. Windows programs run under Wine, in a prefix of their own.
Prints each failure and, last, "N passed, N failed".
"""
import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile
from pathlib import Path

from tests.support.checks import equal, holds, listed_tests, none, run_program, run_tests, test

SECONDS = 180  # until a program that hangs is given up
BUILD_SCRIPT = Path("package/build.py").resolve()
PACKAGES = Path("build/package").resolve()
SAMPLE = Path("data/examples/Musterprojekt.bas").resolve()
BASE = Path("build/wine").resolve()  # made by cmake/wine-run.sh
PROGRAMS = ["TINTLINE.exe", "TINTLINE.com"]
WINDOWS_FILES = sorted([*PROGRAMS, "TINTLINE2.chm", "LIESMICH.txt", "README.txt", "LIZENZ.txt",
                        "vb.ini"])
# Parts of every Windows 10 and 11 of 64 bits, Server Core aside.
SYSTEM_DLLS = {f"{name}.dll" for name in (
    "advapi32 comctl32 comdlg32 gdi32 kernel32 msvcrt ole32 oleacc oleaut32 shell32 shlwapi user32 "
    "uxtheme").split()}
UNINSTALL_KEY = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\TINTLINE"
MENU_KEYS = [rf"Software\Classes\SystemFileAssociations\{kind}\shell\TINTLINE\command"
             for kind in (".bas", ".xlsm")]
ENVIRONMENTS = {"HKCU": "Environment",
                "HKLM": r"System\CurrentControlSet\Control\Session Manager\Environment"}


def run(*command, code=0, encoding="utf-8", **process):
    """Runs a command that must end with that exit code, gives what it says."""
    process = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE,
               "stderr": subprocess.STDOUT, "timeout": SECONDS, **process}
    done = run_program([str(word) for word in command], check=False, **process)
    text = (done.stdout or b"").decode(encoding, "replace")
    assert done.returncode == code, f"{command}: exit code {done.returncode}\n{text}"
    return text


class Prefix:
    """Windows to install programs in: a copy of Wine's prefix."""

    def __init__(self, folder):
        if not (BASE / "prefix").exists():
            run("cmake/wine-run.sh", "cmd", "/c", "rem", stdout=subprocess.DEVNULL)  # makes it
        # Links take no time and no room; only the registry is written in place. (A file that a
        # program running there removes meanwhile is not missed.)
        run("sh", "-c", 'cp -al "$1" "$2" || true', "sh", BASE / "prefix", folder)
        run("cp", "--remove-destination", *(BASE / "prefix").glob("*.reg"), folder)
        self.folder = folder
        self.environment = {**os.environ, "WINEPREFIX": str(folder), "HOME": str(BASE / "home"),
                            "LOCPATH": str(BASE / "locale"), "LC_ALL": "de_DE.UTF-8",
                            "WINEDEBUG": "-all", "WINEARCH": "win64",
                            "WINEDLLOVERRIDES": "winemenubuilder.exe=d;mscoree=d"}
        self.environment.pop("DISPLAY", None)
        # Wine's own processes keep the streams of the program that starts them.
        silent = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        run("wineserver", "-p60", env=self.environment, **silent)
        run("wine", "cmd", "/c", "rem", env=self.environment, **silent)
        self.home = self.run("cmd", "/c", "echo %USERPROFILE%").strip()

    def path(self, windows_path):
        return self.folder / "drive_c" / windows_path[3:].replace("\\", "/")

    def run(self, *command, code=0):
        return run("wine", *command, code=code, env=self.environment, stderr=subprocess.DEVNULL)

    def registry(self, root, key, *which):
        """The values of a key, as the system lists them; "" when it is missing."""
        said = run("sh", "-c", 'wine reg query "$@" || true', "sh", rf"{root}\{key}", *which,
                   env=self.environment, stderr=subprocess.DEVNULL)
        return said if "_SZ " in said else ""

    def search_path(self, root):
        """What PATH is made of, of this user or of all; [] when there is none."""
        said = re.search(r"_SZ +(.*)", self.registry(root, ENVIRONMENTS[root], "/v", "Path"))
        return said[1].strip().split(";") if said else []

    def everything(self):
        """All files and folders, but for those that programs leave for the system to clear."""
        return set(run("find", self.folder / "drive_c", "-not", "-path", "*/Temp/*").splitlines())

    def remove(self, place):
        self.run(place + r"\Uninstall.exe", "/S")
        for _ in range(200):  # it goes on in a copy of itself
            if not (self.path(place) / "Uninstall.exe").exists() and not re.search(
                    "Un_|Au_", self.run("tasklist")):
                return
            time.sleep(0.05)


class Bench:
    """The packages, from which builds, and a folder to work in."""

    def __init__(self, native, windows, folder):
        self.native, self.windows, self.folder = native.resolve(), windows.resolve(), folder
        self.tintline = self.native / "tintline"
        self.version = run(self.tintline, "--version").split()[1]
        self.zip = PACKAGES / f"TINTLINE-{self.version}-win64.zip"
        self.setup = PACKAGES / f"TINTLINE-{self.version}-setup.exe"
        self.deb = PACKAGES / f"tintline_{self.version}_amd64.deb"
        self.prefix = Prefix(folder / "wine")

    def check_installed(self, place, root_key):
        """The program lies there, is registered and runs."""
        folder = self.prefix.path(place)
        equal(sorted(os.listdir(folder)), sorted([*WINDOWS_FILES, "Uninstall.exe"]))
        equal((folder / "TINTLINE.exe").read_bytes(), (self.windows / "TINTLINE.exe").read_bytes())
        equal(self.prefix.run(place + r"\TINTLINE.com", "--version"), f"tintline {self.version}\n")
        holds(self.prefix.registry(root_key, UNINSTALL_KEY), self.version, place,
              rf'"{place}\Uninstall.exe" /S')
        told = self.prefix.registry(root_key, UNINSTALL_KEY).split("EstimatedSize")[1].split()[1]
        size = sum(path.stat().st_size for path in folder.iterdir()) / 1024
        assert size * 0.97 < int(told, 16) < size * 1.01, (told, size)


@test
def packaging_again_elsewhere_gives_the_same_bytes(bench):
    again, packages = bench.folder / "again", (bench.zip, bench.setup, bench.deb)
    run(BUILD_SCRIPT, "--native", bench.native, "--windows", bench.windows, "--target", again,
        cwd=bench.folder, umask=0o077, env={**os.environ, "TZ": "Asia/Tokyo", "LC_ALL": "C"})
    equal(sorted(os.listdir(again)), sorted(package.name for package in packages))
    for package in packages:
        assert package.read_bytes() == (again / package.name).read_bytes(), package.name
    holds(run(BUILD_SCRIPT, "--native", bench.native, "--windows", bench.native, "--target",
              bench.folder / "none", code=1), "TINTLINE.exe is missing")
    none((bench.folder / "none").glob("*"))


@test
def the_zip_holds_the_program_which_needs_nothing_else(bench):
    with zipfile.ZipFile(bench.zip) as archive:
        archive.extractall(bench.prefix.path("C:\\"))
    folder = bench.prefix.path("C:\\" + bench.zip.stem)
    equal(sorted(os.listdir(folder)), WINDOWS_FILES)
    for name in PROGRAMS:
        headers = run("x86_64-w64-mingw32-objdump", "-p", folder / name)
        none({dll.lower() for dll in re.findall(r"DLL Name: (\S+)", headers)} - SYSTEM_DLLS)
        holds(headers, "HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT", "reloc ")
        content = (folder / name).read_bytes()
        none(text for text in ('level="asInvoker"', "longPathAware") if text.encode() not in content)
        none(text for text in ("Die TINTLINE-Autoren", f"\0{bench.version}\0", f"\0{name}\0")
             if text.encode("utf-16-le") not in content)
    for name, word in (("LIESMICH.txt", bench.version), ("README.txt", bench.version),
                       ("LIZENZ.txt", "GCC Runtime Library")):
        holds((folder / name).read_bytes().decode("utf-8-sig"), word, "\r\n")
    program = rf"C:\{bench.zip.stem}\TINTLINE.com"
    equal(bench.prefix.run(program, "-n", SAMPLE), run(bench.tintline, "-n", SAMPLE))
    for locale, word in (("de_DE.UTF-8", "Aufruf: "), ("C.UTF-8", "Usage: ")):  # of the interface
        holds(run("wine", program, "--help", stderr=subprocess.DEVNULL,
                  env={**bench.prefix.environment, "LC_ALL": locale}), word)


@test
def installed_and_removed_nothing_is_left(bench):
    prefix = bench.prefix
    own = prefix.home + r"\AppData\Local\Programs\TINTLINE"
    menu = r"Microsoft\Windows\Start Menu\Programs\TINTLINE.lnk"
    long = ";".join(rf"%TEMP%\{number}" for number in range(500))
    prefix.run("reg", "add", r"HKCU\Environment", "/v", "Path", "/t", "REG_EXPAND_SZ", "/d", long)
    for place, key, options, link in (
            (own, "HKCU", ["/Path"], prefix.home + "\\AppData\\Roaming\\" + menu),
            (r"C:\Program Files\TINTLINE", "HKLM", ["/AllUsers", "/ContextMenu", "/Path"],
             "C:\\ProgramData\\" + menu)):
        before, search_path = prefix.everything(), prefix.search_path(key)
        prefix.run(bench.setup, "/S", *options)
        bench.check_installed(place, key)
        assert prefix.path(link).exists(), link
        for menu_key in MENU_KEYS:
            equal(f"{place}\\TINTLINE.exe" in prefix.registry(key, menu_key),
                  "/ContextMenu" in options)
        equal(prefix.search_path(key), [*search_path, place])
        # What it makes itself goes as well, when nobody changed it.
        shutil.copyfile("package/TINTLINE.ini", prefix.path(place) / "TINTLINE.ini")
        (prefix.path(place) / "dummy.html").write_bytes(b"<html>")
        prefix.remove(place)
        equal(sorted(prefix.everything() - before), [])
        equal(prefix.search_path(key), search_path)
        for gone in (UNINSTALL_KEY, *MENU_KEYS):
            equal(prefix.registry(key, gone), "")


@test
def a_version_is_replaced_whole_or_not_at_all_and_settings_stay(bench):
    prefix, old, new = bench.prefix, r"C:\Alt", r"C:\Neu"
    before = prefix.everything()
    prefix.run("reg", "delete", r"HKCU\Environment", "/v", "Path", "/f")
    prefix.run(bench.setup, "/S", "/ContextMenu", "/Path", rf"/D={old}")
    (prefix.path(old) / "TINTLINE.exe").write_bytes(b"of an older version")
    prefix.run(bench.setup, "/S")  # where it lies
    bench.check_installed(old, "HKCU")
    holds(prefix.registry("HKCU", MENU_KEYS[-1]), rf"{old}\TINTLINE.exe")

    blocked = prefix.path(new) / "TINTLINE2.chm"
    blocked.mkdir(parents=True)
    for folder in (new, "C:\\" + 300 * "x", r"Q:\TINTLINE"):
        prefix.run(bench.setup, "/S", f"/D={folder}", code=2)
    running = subprocess.Popen(["wine", rf"{old}\TINTLINE.com", "-"], env=prefix.environment,
                               stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)  # waits for its input
    time.sleep(1)
    prefix.run(rf"{old}\Uninstall.exe", "/S", rf"_?={old}", code=2)
    prefix.run(bench.setup, "/S", code=2)
    running.communicate(timeout=SECONDS)
    bench.check_installed(old, "HKCU")
    blocked.rmdir()
    prefix.run(bench.setup, "/S", f"/D={new}")
    bench.check_installed(new, "HKCU")
    assert not prefix.path(old).exists()
    equal(prefix.search_path("HKCU"), [new])

    changed = {name: (Path("package" if name == "TINTLINE.ini" else "data") / name).read_bytes()
               + b"Hund\r\n" for name in ("TINTLINE.ini", "vb.ini")}
    for name, content in changed.items():
        (prefix.path(new) / name).write_bytes(content)
    for _ in range(2):
        prefix.run(bench.setup, "/S", f"/D={new}")  # goes on with them
        prefix.remove(new)
        equal({path.name: path.read_bytes() for path in prefix.path(new).iterdir()}, changed)
    shutil.rmtree(prefix.path(new))
    equal(sorted(prefix.everything() - before), [])
    equal(prefix.search_path("HKCU"), [])


def check_manual_and_completion(bench, share):
    """Manual pages tell every option and render without a warning; bash completes options."""
    environment = {**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "80", "MANPAGER": "cat"}
    options = re.findall(r"^ {2,6}(?:-\w, )?(--[\w-]+)", run(bench.tintline, "--help"), re.M)
    assert len(options) >= 14, options
    for page in share.glob("man/**/tintline.1.gz"):
        equal(run("man", "--warnings", "-E", "UTF-8", "-Tutf8", "-Z", "-l", page, env=environment,
                  stdout=subprocess.DEVNULL, stderr=subprocess.PIPE), "")
        text = run("man", "-E", "UTF-8", "-l", page, env=environment)
        none(option for option in options
             if not re.search(rf"^ {{7}}(-\w, )?{option}(?![\w-])", text, re.M))
    ask = 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); ' \
          '$(complete -p tintline | sed "s/.*-F \\([^ ]*\\).*/\\1/"); ' \
          'printf "%s\\n" "${COMPREPLY[@]}"'
    for words, expected in ((["--"], sorted(options)), (["--style", ""], ["class", "inline"]),
                            (["-n", "M"], ["Musterprojekt.bas"]), (["--jobs", ""], [])):
        said = run("bash", "--norc", "-c", ask, "bash",
                   share / "bash-completion/completions/tintline", "tintline", *words,
                   cwd=SAMPLE.parent)
        equal(sorted(said.split()), expected)


@test
def the_debian_package_installs_runs_and_goes(bench):
    assert "Depends" not in run("dpkg-deb", "-f", bench.deb)
    equal({line.split()[1] for line in run("dpkg-deb", "-c", bench.deb).splitlines()},
          {"root/root"})
    program = run("readelf", "-hldW", bench.tintline)
    holds(program, "DYN (Position-Independent", "GNU_RELRO", "NOW PIE")
    none(word for word in ("INTERP", "(NEEDED)", "RWE") if word in program)
    root = bench.folder / "root"
    (root / "var/lib/dpkg/updates").mkdir(parents=True)
    (root / "var/lib/dpkg/info").mkdir()
    for name in ("status", "available"):
        (root / "var/lib/dpkg" / name).touch()
    dpkg = ["fakeroot", "dpkg", f"--root={root}", "--log=/dev/null"]
    run(*dpkg, "--install", bench.deb)
    run("md5sum", "-c", root / "var/lib/dpkg/info/tintline.md5sums", cwd=root)
    words = root / "usr/share/doc/tintline/examples/vb.ini"
    equal(run(root / "usr/bin/tintline", "--keywords", words, SAMPLE), run(bench.tintline, SAMPLE))
    shared = shutil.copytree(root / "usr/share", bench.folder / "share")
    run(*dpkg, "--purge", "tintline")
    assert not (root / "usr").exists() or not any((root / "usr").iterdir())
    check_manual_and_completion(bench, shared)


@test
def cmake_installs_program_manual_and_completions(bench):
    run("cmake", "--install", bench.native, "--prefix", "/usr",
        env={**os.environ, "DESTDIR": str(bench.folder / "installed")})
    root = bench.folder / "installed/usr"
    equal(sorted(str(path.relative_to(root)) for path in root.rglob("*") if path.is_file()),
          ["bin/tintline", "share/bash-completion/completions/tintline",
           "share/doc/tintline/examples/TINTLINE.ini", "share/doc/tintline/examples/vb.ini",
           "share/fish/vendor_completions.d/tintline.fish", "share/man/de/man1/tintline.1",
           "share/man/man1/tintline.1", "share/zsh/site-functions/_tintline"])
    holds((root / "share/man/man1/tintline.1").read_text("utf-8"), f'"TINTLINE {bench.version}"')


def main():
    parser = argparse.ArgumentParser(description="Makes the packages and looks at them.")
    parser.add_argument("--native", type=Path, required=True, metavar="DIR")
    parser.add_argument("--windows", type=Path, required=True, metavar="DIR")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tintline-package-", dir="build",
                                     ignore_cleanup_errors=True) as folder:
        bench = Bench(options.native, options.windows, Path(folder).resolve())
        code = run_tests(listed_tests(lambda function: function(bench)))
        run("wineserver", "-k", env=bench.prefix.environment)
    return code


if __name__ == "__main__":
    sys.exit(main())
