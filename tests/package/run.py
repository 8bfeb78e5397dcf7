"""Makes the packages and looks at them as their users do: unpacks, installs, runs, removes.

    python3 -m tests.package.run --native DIR --windows DIR [--only PART-OF-A-NAME]

The folders are those of the builds. Windows programs run under Wine, in a prefix of their own.
That packages are the same bytes each time is tried by packaging one build twice, in different
folders and surroundings; compiling twice is not tried here. Prints each failure and, last,
"N passed, N failed".
"""
import argparse
import gzip
import hashlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile
from pathlib import Path

from tests.package import portable_executable, wine
from tests.support.checks import equal, listed_tests, run_tests, test

SECONDS = 120  # until a program that hangs is given up
BUILD_SCRIPT = Path("package/build.py").resolve()
SAMPLE = Path("data/examples/Musterprojekt.bas")
PROGRAMS = ["TINTLINE.exe", "TINTLINE.com"]
WINDOWS_FILES = sorted([*PROGRAMS, "TINTLINE2.chm", "LIESMICH.txt", "LIZENZ.txt", "vb.ini"])
DEBIAN_FILES = [
    "usr/bin/tintline", "usr/share/bash-completion/completions/tintline",
    "usr/share/doc/tintline/changelog.gz", "usr/share/doc/tintline/copyright",
    "usr/share/doc/tintline/examples/vb.ini", "usr/share/lintian/overrides/tintline",
    "usr/share/man/de/man1/tintline.1.gz", "usr/share/man/man1/tintline.1.gz"]
UNINSTALL_KEY = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\TINTLINE"
MENU_KEYS = [rf"Software\Classes\SystemFileAssociations\.{kind}\shell\TINTLINE\command"
             for kind in ("bas", "cls", "frm")]


def run(*command, code=0, **process):
    """Runs a command that must end with that exit code, gives what it says."""
    process = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE,
               "stderr": subprocess.STDOUT, "timeout": SECONDS, **process}
    done = subprocess.run([str(word) for word in command], **process)
    text = (done.stdout or b"").decode("utf-8", "replace")
    assert done.returncode == code, f"{command}: exit code {done.returncode}\n{text}"
    return text


class Bench:
    """The packages, and a folder to work in."""

    def __init__(self, options, folder):
        self.native, self.windows = options.native.resolve(), options.windows.resolve()
        self.folder = folder
        self.packages = self.package("packages", self.native, self.windows)
        self.tintline = self.native / "tintline"
        self.version = run(self.tintline, "--version").split()[1]
        self.zip = self.packages / f"TINTLINE-{self.version}-win64.zip"
        self.setup = self.packages / f"TINTLINE-{self.version}-setup.exe"
        self.deb = self.packages / f"tintline_{self.version}_amd64.deb"
        self._prefix = None

    def package(self, name, native, windows, **process):
        target = self.folder / name
        run(BUILD_SCRIPT, "--native", native, "--windows", windows, "--target", target, **process)
        return target

    def copy_of_builds(self, name):
        """What the packages are made of, in another place."""
        for build, files in ((self.native, ["tintline"]),
                             (self.windows, [*PROGRAMS, "TINTLINE2.chm"])):
            copy = self.folder / name / build.name
            copy.mkdir(parents=True)
            for file in [*files, "CMakeCache.txt"]:
                shutil.copyfile(build / file, copy / file)
        return self.folder / name / self.native.name, self.folder / name / self.windows.name

    def program(self, name):
        return self.windows / name

    @property
    def prefix(self):
        if not self._prefix:
            self._prefix = wine.Prefix(self.folder / "wine")
        return self._prefix

    def unpacked_deb(self):
        root = self.folder / "deb"
        if not root.exists():
            run("dpkg-deb", "-x", self.deb, root)
        return root

    def close(self):
        if self._prefix:
            self._prefix.close()


# ------------------------------------------------------------------------------ packaging

@test
def packages_bear_the_version_of_the_programs(bench):
    project = re.search(r"^project\(TINTLINE VERSION (\S+)", Path("CMakeLists.txt").read_text(),
                        re.M)[1]
    equal(bench.version, project)
    equal(sorted(os.listdir(bench.packages)),
          sorted(path.name for path in (bench.zip, bench.setup, bench.deb)))


@test
def packaging_again_elsewhere_gives_the_same_bytes(bench):
    again = bench.package("again", *bench.copy_of_builds("copy"), cwd=bench.folder, umask=0o077,
                          env={**os.environ, "TZ": "Asia/Tokyo", "LC_ALL": "C"})
    for package in (bench.zip, bench.setup, bench.deb):
        assert package.read_bytes() == (again / package.name).read_bytes(), package.name


@test
def what_is_missing_is_named_and_nothing_is_made(bench):
    native, windows = bench.copy_of_builds("incomplete")
    target = bench.folder / "none"
    for file in (windows / "TINTLINE.exe", native / "CMakeCache.txt"):
        file.unlink()
        said = run(BUILD_SCRIPT, "--native", native, "--windows", windows, "--target", target,
                   code=1)
        assert (file.name if file.suffix == ".exe" else str(native)) in said, said
        equal(os.listdir(target), [])
        file.write_bytes(b"x")


@test
def the_control_file_is_what_its_script_makes(bench):
    made = bench.folder / "vb.ini"
    run("data/make_vb_ini.py", made)
    assert made.read_bytes() == Path("data/vb.ini").read_bytes(), "run data/make_vb_ini.py"


# ------------------------------------------------------------------------- Windows, files

@test
def the_zip_holds_the_program(bench):
    folder = bench.zip.stem + "/"
    with zipfile.ZipFile(bench.zip) as archive:
        equal(archive.testzip(), None)
        equal(archive.namelist(), [folder + name for name in WINDOWS_FILES])
        equal(len({entry.date_time for entry in archive.infolist()}), 1)
        equal({oct(entry.external_attr >> 16) for entry in archive.infolist()}, {"0o644"})
        for name in (*PROGRAMS, "TINTLINE2.chm"):
            equal(archive.read(folder + name), bench.program(name).read_bytes())
        equal(archive.read(folder + "vb.ini"), Path("data/vb.ini").read_bytes())
        texts = {name: archive.read(folder + name) for name in ("LIESMICH.txt", "LIZENZ.txt")}
    for text in texts.values():
        assert text.startswith(b"\xef\xbb\xbf"), text[:20]
        equal(text.count(b"\n"), text.count(b"\r\n"))
    readme = texts["LIESMICH.txt"].decode("utf-8-sig")
    title, line = readme.split("\r\n")[:2]
    equal(line, "=" * len(title))
    assert "Einstellungen › Apps" in readme, readme  # the installer has this file as well
    missing = [word for word in (*WINDOWS_FILES, bench.version, "Übersicht")
               if word not in readme and word != "LIESMICH.txt"]
    assert not missing and "@" not in readme, (missing, readme)
    licence = texts["LIZENZ.txt"].decode("utf-8-sig").replace("\r\n", "\n")
    assert licence.startswith(Path("LICENSE").read_text(encoding="utf-8")), licence
    assert "GCC Runtime Library" in licence and "mingw-w64" in licence, licence


@test
def programs_need_only_what_every_windows_has(bench):
    for name in PROGRAMS:
        imported = portable_executable.imported_dlls(bench.program(name))
        assert "kernel32.dll" in imported, imported
        unknown = imported - set(portable_executable.SYSTEM_DLLS)
        assert not unknown, f"{name} imports {unknown}"


@test
def programs_have_random_addresses_and_no_code_among_data(bench):
    for name in PROGRAMS:
        equal((name, portable_executable.hardening_faults(bench.program(name))), (name, []))


@test
def programs_carry_version_icon_and_manifest(bench):
    for name in PROGRAMS:
        found = portable_executable.Resources(bench.program(name))
        major, minor, patch = map(int, bench.version.split("."))
        equal((name, found.file_version()), (name, (major, minor, 0, patch)))
        texts = found.version_texts()
        equal((texts["ProductName"], texts["ProductVersion"], texts["OriginalFilename"],
               texts["CompanyName"]), ("TINTLINE", bench.version, name, "Die TINTLINE-Autoren"))
        sizes = found.icon_sizes()
        assert {16, 32, 48, 256} <= sizes, (name, sizes)
        manifest = found.manifest()
        assert 'level="asInvoker"' in manifest and "longPathAware" in manifest, manifest
    setup = portable_executable.Resources(bench.setup)
    texts = setup.version_texts()
    equal((setup.file_version(), texts["ProductVersion"], texts["CompanyName"]),
          ((major, minor, 0, patch), bench.version, "Die TINTLINE-Autoren"))
    assert "Common-Controls" in portable_executable.Resources(
        bench.program("TINTLINE.exe")).manifest()


# --------------------------------------------------------------------- Windows, installer

def check_installed(bench, place, root_key):
    """The program lies there, is registered and runs."""
    prefix = bench.prefix
    folder = prefix.path(place)
    equal(sorted(os.listdir(folder)), sorted([*WINDOWS_FILES, "Uninstall.exe"]))
    for name in (*PROGRAMS, "TINTLINE2.chm"):
        equal((folder / name).read_bytes(), bench.program(name).read_bytes())
    equal(prefix.run(place + r"\TINTLINE.com", "--version"), f"tintline {bench.version}\n")
    values = prefix.registry(root_key, UNINSTALL_KEY)
    equal((values["DisplayName"], values["DisplayVersion"], values["InstallLocation"]),
          ("TINTLINE", bench.version, place))
    equal(values["QuietUninstallString"], rf'"{place}\Uninstall.exe" /S')


def remove(bench, place):
    bench.prefix.run(place + r"\Uninstall.exe", "/S")
    gone = bench.prefix.path(place) / "Uninstall.exe"
    for _ in range(400):  # the uninstaller goes on in a copy of itself
        if not gone.exists():
            break
        time.sleep(0.05)
    bench.prefix.wait_for_copy()


@test
def installed_for_one_user_and_removed(bench):
    prefix = bench.prefix
    before = prefix.everything()
    prefix.run(bench.setup, "/S")
    place = prefix.local_data + r"\Programs\TINTLINE"
    check_installed(bench, place, "HKCU")
    assert prefix.start_menu("user") == {"TINTLINE.lnk"} and not prefix.start_menu("all")
    for key in MENU_KEYS:
        equal(prefix.registry("HKCU", key), {})
    equal(prefix.registry("HKLM", UNINSTALL_KEY), {})
    # The files that it makes itself go as well, when nobody changed them.
    shutil.copyfile("package/TINTLINE.ini", prefix.path(place) / "TINTLINE.ini")
    prefix.user_settings.parent.mkdir()
    shutil.copyfile("package/TINTLINE.ini", prefix.user_settings)
    (prefix.path(place) / "dummy.html").write_bytes(b"<html>")
    remove(bench, place)
    equal(sorted(prefix.everything() - before), [])
    equal(prefix.registry("HKCU", UNINSTALL_KEY), {})


@test
def installed_for_all_users_with_a_context_menu_and_removed(bench):
    prefix = bench.prefix
    before = prefix.everything()
    prefix.run(bench.setup, "/S", "/AllUsers", "/ContextMenu")
    place = r"C:\Program Files\TINTLINE"
    check_installed(bench, place, "HKLM")
    assert prefix.start_menu("all") == {"TINTLINE.lnk"} and not prefix.start_menu("user")
    for key in MENU_KEYS:
        equal(prefix.registry("HKLM", key), {"": rf'"{place}\TINTLINE.exe" "%1"'})
        equal(prefix.registry("HKLM", key.removesuffix(r"\command"))[""],
              "Mit TINTLINE konvertieren")
    equal(prefix.registry("HKCU", UNINSTALL_KEY), {})
    remove(bench, place)
    equal(sorted(prefix.everything() - before), [])
    for key in (UNINSTALL_KEY, *(key.split(r"\shell")[0] for key in MENU_KEYS)):
        equal(prefix.registry("HKLM", key), {})


@test
def settings_that_the_user_changed_stay(bench):
    prefix = bench.prefix
    programs = prefix.path(prefix.local_data + r"\Programs")
    programs.mkdir(exist_ok=True)  # of other programs
    prefix.run(bench.setup, "/S", r"/D=C:\Ziel")
    folder = prefix.path(r"C:\Ziel")
    settings = Path("package/TINTLINE.ini").read_bytes().replace(b"#0000FF", b"#0000FE")
    words = (folder / "vb.ini").read_bytes() + b"Hund\r\n"
    prefix.user_settings.parent.mkdir()
    for path in (folder / "TINTLINE.ini", prefix.user_settings):
        path.write_bytes(settings)
    (folder / "vb.ini").write_bytes(words)
    remove(bench, r"C:\Ziel")
    equal(sorted(os.listdir(folder)), ["TINTLINE.ini", "vb.ini"])
    # Installed again, it goes on with them.
    prefix.run(bench.setup, "/S", r"/D=C:\Ziel")
    remove(bench, r"C:\Ziel")
    for path in (folder / "TINTLINE.ini", prefix.user_settings):
        equal(path.read_bytes(), settings)
    equal((folder / "vb.ini").read_bytes(), words)
    assert programs.exists()
    programs.rmdir()
    shutil.rmtree(folder)
    shutil.rmtree(prefix.user_settings.parent)


def older_setup(bench):
    """The installer of a version that had other files of the same names."""
    stage = bench.folder / "older"
    stage.mkdir()
    for name in WINDOWS_FILES:
        (stage / name).write_bytes(b"[Keywords 1]\r\n" + name.encode())
    target = bench.folder / "older-setup.exe"
    names = {"VERSION": "0.0.9", "VERSION_NUMBERS": "0.0.0.9", "STAGE": stage,
             "REFERENCE": Path("package").resolve(), "TARGET": target,
             "PICTURES": Path("data/icons").resolve()}
    run("makensis", "-V2", "-INPUTCHARSET", "UTF8",
        *(f"-D{name}={value}" for name, value in names.items()), "package/setup.nsi")
    return target


@test
def an_older_version_is_replaced_where_it_lies(bench):
    prefix = bench.prefix
    before = prefix.everything()
    prefix.run(older_setup(bench), "/S", "/ContextMenu", r"/D=C:\Alt")
    equal(prefix.registry("HKCU", UNINSTALL_KEY)["DisplayVersion"], "0.0.9")
    (prefix.path(r"C:\Alt") / "TINTLINE.ini").write_bytes(b"mine")
    prefix.run(bench.setup, "/S")
    (prefix.path(r"C:\Alt") / "TINTLINE.ini").unlink()  # it was kept
    check_installed(bench, r"C:\Alt", "HKCU")
    equal((prefix.path(r"C:\Alt") / "vb.ini").read_bytes(), Path("data/vb.ini").read_bytes())
    equal(prefix.registry("HKCU", MENU_KEYS[0]), {"": r'"C:\Alt\TINTLINE.exe" "%1"'})
    remove(bench, r"C:\Alt")
    equal(sorted(prefix.everything() - before), [])


@test
def a_version_elsewhere_goes_only_when_the_new_one_can_be_written(bench):
    prefix = bench.prefix
    before = prefix.everything()
    prefix.run(bench.setup, "/S", r"/D=C:\Da")
    (prefix.path("C:\\") / "Datei").write_bytes(b"")
    blocked = prefix.path(r"C:\Neu") / "TINTLINE2.chm"
    blocked.mkdir(parents=True)
    too_long = "C:\\" + 300 * "x"
    for folder in (r"C:\Neu", too_long, r"C:\Datei\TINTLINE", r"Q:\TINTLINE", "TINTLINE"):
        prefix.run(bench.setup, "/S", f"/D={folder}", code=2)
        check_installed(bench, r"C:\Da", "HKCU")
        equal(os.listdir(blocked.parent), [blocked.name])
    blocked.rmdir()
    prefix.run(bench.setup, "/S", r"/D=C:\Neu")
    check_installed(bench, r"C:\Neu", "HKCU")
    remove(bench, r"C:\Neu")
    equal(prefix.everything() - before, {"Datei"})  # C:\Da is gone
    (prefix.path("C:\\") / "Datei").unlink()


@test
def what_is_in_use_is_neither_replaced_nor_removed(bench):
    prefix = bench.prefix
    prefix.run(bench.setup, "/S", r"/D=C:\Laeuft")
    folder = prefix.path(r"C:\Laeuft")
    before = sorted(os.listdir(folder))
    shutil.copyfile(folder / "TINTLINE.com", folder / "TINTLINE2.chm")  # open when it runs
    for name in ("TINTLINE.com", "TINTLINE2.chm"):
        with prefix.start(rf"C:\Laeuft\{name}", "-") as running:  # waits for its input
            prefix.run(r"C:\Laeuft\Uninstall.exe", "/S", r"_?=C:\Laeuft", code=2)
            prefix.run(bench.setup, "/S", code=2)
            equal((name, sorted(os.listdir(folder))), (name, before))
            equal(prefix.registry("HKCU", UNINSTALL_KEY)["InstallLocation"], r"C:\Laeuft")
            running.stdin.close()
            running.wait(SECONDS)
    # What only shows when it shall be deleted leaves the rest to be removed again.
    shutil.copyfile(folder / "TINTLINE.com", folder / "dummy.html")
    with prefix.start(r"C:\Laeuft\dummy.html", "-") as running:
        prefix.run(r"C:\Laeuft\Uninstall.exe", "/S", r"_?=C:\Laeuft", code=2)
        equal(prefix.registry("HKCU", UNINSTALL_KEY)["InstallLocation"], r"C:\Laeuft")
        running.stdin.close()
        running.wait(SECONDS)
    remove(bench, r"C:\Laeuft")
    assert not folder.exists(), os.listdir(folder)


@test
def the_unpacked_zip_runs_beside_its_control_file(bench):
    with zipfile.ZipFile(bench.zip) as archive:
        archive.extractall(bench.prefix.path(r"C:\Entpackt"))
    program = rf"C:\Entpackt\{bench.zip.stem}\TINTLINE.com"
    page = run(bench.tintline, "-n", SAMPLE)
    equal(bench.prefix.run(program, "-n", SAMPLE.resolve()), page)


# --------------------------------------------------------------------------------- Debian

@test
def the_debian_package_is_well_formed(bench):
    fields = dict(re.findall(r"^(\S+): (.*)$", run("dpkg-deb", "-f", bench.deb), re.M))
    equal((fields["Package"], fields["Version"], fields["Architecture"]),
          ("tintline", bench.version, "amd64"))
    assert "Depends" not in fields and "@" not in fields["Version"], fields
    root = bench.unpacked_deb()
    equal(sorted(str(path.relative_to(root)) for path in root.rglob("*") if path.is_file()),
          DEBIAN_FILES)
    listing = run("dpkg-deb", "-c", bench.deb)
    equal({line.split()[1] for line in listing.splitlines()}, {"root/root"})
    equal({line[:10] for line in listing.splitlines()},
          {"drwxr-xr-x", "-rw-r--r--", "-rwxr-xr-x"})
    sums = run("dpkg-deb", "-I", bench.deb, "md5sums")
    equal(dict(reversed(line.split()) for line in sums.splitlines()),
          {name: hashlib.md5((root / name).read_bytes()).hexdigest() for name in DEBIAN_FILES})
    assert Path("LICENSE").read_text().splitlines()[2] in (
        root / "usr/share/doc/tintline/copyright").read_text().replace("Copyright: ",
                                                                      "Copyright (c) ")
    changes = gzip.decompress((root / "usr/share/doc/tintline/changelog.gz").read_bytes())
    assert changes.startswith(f"tintline ({bench.version}) ".encode()), changes


@test
def the_debian_package_installs_runs_and_goes(bench):
    root = bench.folder / "root"
    state = root / "var/lib/dpkg"
    (state / "updates").mkdir(parents=True)
    (state / "info").mkdir()
    for name in ("status", "available"):
        (state / name).touch()
    dpkg = ["fakeroot", "dpkg", f"--root={root}", "--log=/dev/null"]
    run(*dpkg, "--install", bench.deb)
    installed = root / "usr/bin/tintline"
    equal(run(installed, "--version"), f"tintline {bench.version}\n")
    vb_ini = root / "usr/share/doc/tintline/examples/vb.ini"
    equal(run(installed, "--keywords", vb_ini, SAMPLE), run(bench.tintline, SAMPLE))
    run(*dpkg, "--purge", "tintline")
    equal([str(path) for path in (root / "usr").rglob("*")] if (root / "usr").exists() else [], [])


def options_of_help(bench):
    """[("-o", "--output"), ("", "--format"), ...]"""
    options = re.findall(r"^  (?:(-\w), |    )(--[\w-]+)", run(bench.tintline, "--help"), re.M)
    assert len(options) >= 14, options
    return options


def values_of_help(bench):
    """The words that --format and --style know."""
    text = run(bench.tintline, "--help")
    formats = re.findall(r"^ {30}(\w+) {2,}\S", text, re.M)
    styles = re.findall(r"^ {2}.{26}(\w+): CSS", text, re.M)
    assert len(formats) >= 6 and len(styles) == 2, (formats, styles)
    return formats, styles


@test
def manual_pages_tell_every_option_and_render_without_a_warning(bench):
    for page in ("man1", "de/man1"):
        path = bench.unpacked_deb() / "usr/share/man" / page / "tintline.1.gz"
        environment = {**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "80"}
        warnings = run("man", "--warnings", "-E", "UTF-8", "-Tutf8", "-Z", "-l", path,
                       stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, env=environment)
        equal(warnings, "")
        text = run("man", "-E", "UTF-8", "-l", path, env={**environment, "MANPAGER": "cat"})
        for short, long in options_of_help(bench):
            left = rf"^ {{7}}{short + ', ' if short else ''}{long}(?![\w-])"
            assert re.search(left, text, re.M), f"{page}: {short} {long} is missing"
        for value in (*values_of_help(bench)[0], *values_of_help(bench)[1]):
            assert re.search(rf"^ {{7,}}{value}\b", text, re.M), f"{page}: {value} is missing"
        assert bench.version in text and "@" not in text, text


def complete(bench, *words):
    """What bash offers for the last word."""
    script = bench.unpacked_deb() / "usr/share/bash-completion/completions/tintline"
    ask = 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); ' \
          '$(complete -p tintline | sed "s/.*-F \\([^ ]*\\).*/\\1/"); ' \
          'printf "%s\\n" "${COMPREPLY[@]}"'
    said = run("bash", "--norc", "-c", ask, "bash", script, "tintline", *words,
               cwd=bench.folder / "sources")
    return sorted(word for word in said.split("\n") if word)


@test
def bash_completes_options_values_and_files(bench):
    sources = bench.folder / "sources"
    (sources / "mit leer").mkdir(parents=True)
    for name in ("a.bas", "B.CLS", "c d.frm", "e.txt", "vb.ini"):
        (sources / name).touch()
    offered = complete(bench, "-")
    wanted = [name for pair in options_of_help(bench) for name in pair if name]
    equal(offered, sorted(wanted))
    formats, styles = values_of_help(bench)
    everything = sorted(os.listdir(sources))
    for words, expected in (
            (["--f"], ["--format"]),
            (["--format", ""], sorted(formats)),
            (["--format", "=", "p"], ["page", "preview"]),
            (["--format", "="], sorted(formats)),
            (["--style", ""], sorted(styles)),
            (["--jobs", ""], []),
            (["-n", ""], ["B.CLS", "a.bas", "c d.frm", "mit leer"]),
            (["--format", "page", "a"], ["a.bas"]),
            (["-d", ""], ["mit leer"]),
            (["-o", ""], everything),
            (["--keywords", "v"], ["vb.ini"])):
        equal((words, complete(bench, *words)), (words, expected))


def main():
    parser = argparse.ArgumentParser(description="Makes the packages and looks at them.")
    parser.add_argument("--native", type=Path, required=True, metavar="DIR")
    parser.add_argument("--windows", type=Path, required=True, metavar="DIR")
    parser.add_argument("--only", default="", metavar="PART-OF-A-NAME")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tintline-package-", dir="build",
                                     ignore_cleanup_errors=True) as folder:
        bench = Bench(options, Path(folder).resolve())
        code = run_tests(listed_tests(lambda function: function(bench), options.only))
        bench.close()
    return code


if __name__ == "__main__":
    sys.exit(main())
