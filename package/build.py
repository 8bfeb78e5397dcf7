#!/usr/bin/env python3
"""Makes what users download, from programs that are built already:

    package/build.py [--native DIR] [--windows DIR] [--target DIR]

TINTLINE-<version>-win64.zip, TINTLINE-<version>-setup.exe and tintline_<version>_amd64.deb.
Equal inputs give equal bytes: the only time that goes into them is SOURCE_DATE_EPOCH, or that
of the last commit. Tested by tests/package/run.py.
"""
import argparse
import datetime
import email.utils
import gzip
import hashlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent
FILE_MODE, PROGRAM_MODE, FOLDER_MODE = 0o644, 0o755, 0o755


class Missing(Exception):
    """Something that a package needs is not there."""


def version_of(build):
    """The version that a build folder was configured with."""
    cache = build / "CMakeCache.txt"
    if not cache.exists():
        raise Missing(f"{build} is no build folder: build the presets native and windows first")
    return re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.+)$", cache.read_text(), re.M)[1]


def source_time():
    """Seconds since 1970 of what is packaged."""
    if "SOURCE_DATE_EPOCH" in os.environ:
        return int(os.environ["SOURCE_DATE_EPOCH"])
    done = subprocess.run(["git", "log", "-1", "--format=%ct"], cwd=ROOT, capture_output=True)
    if done.returncode != 0:
        raise Missing("there is no commit to take the time from: set SOURCE_DATE_EPOCH")
    return int(done.stdout)


class Package:
    """What the three packages share."""

    def __init__(self, native, windows, target, work):
        self.native, self.windows, self.target, self.work = native, windows, target, work
        self.version = version_of(windows)
        if version_of(native) != self.version:
            raise Missing(f"{native} and {windows} are builds of different versions")
        self.time = source_time()
        self.date = datetime.datetime.fromtimestamp(self.time, datetime.timezone.utc)

    def filled(self, path, **values):
        """A text of ours with its @NAMES@ replaced."""
        values = {"VERSION": self.version, "DATE": f"{self.date:%Y-%m-%d}", **values}
        text = path.read_text(encoding="utf-8")
        return re.sub(r"@([A-Z_]+)@", lambda name: str(values[name[1]]), text)

    def put(self, path, content, mode=FILE_MODE):
        """Writes a file, or copies one, with fixed time and mode, whatever the umask."""
        path.parent.mkdir(parents=True, exist_ok=True)
        if isinstance(content, Path):
            if not content.exists():
                raise Missing(f"{content} is missing: build the presets native and windows first")
            content = content.read_bytes()
        path.write_bytes(content)
        path.chmod(mode)
        os.utime(path, (self.time, self.time))

    def run(self, *command):
        environment = {**os.environ, "SOURCE_DATE_EPOCH": str(self.time), "TZ": "UTC"}
        done = subprocess.run(command, env=environment, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
        if done.returncode != 0:
            sys.exit(f"{command[0]} failed:\n{done.stdout.decode(errors='replace')}")


def kilobytes(files):
    return sum(-(-path.stat().st_size // 1024) for path in files)


def stage_windows(package):
    """The folder of files that a user of Windows gets."""
    folder = package.work / "windows"
    for name in ("TINTLINE.exe", "TINTLINE.com", "TINTLINE2.chm"):
        package.put(folder / name, package.windows / name)
    package.put(folder / "vb.ini", ROOT / "data" / "vb.ini")
    licence = "\n".join(path.read_text(encoding="utf-8")
                        for path in (ROOT / "LICENSE", HERE / "NOTICES.txt"))
    for name, text in (("LIESMICH.txt", package.filled(HERE / "LIESMICH.txt")),
                       ("README.txt", package.filled(HERE / "README.txt")),
                       ("LIZENZ.txt", licence)):
        package.put(folder / name, text.replace("\n", "\r\n").encode("utf-8-sig"))
    return folder


def make_zip(package, folder):
    name = f"TINTLINE-{package.version}-win64"
    with zipfile.ZipFile(package.target / f"{name}.zip", "w") as archive:
        for path in sorted(folder.iterdir()):
            entry = zipfile.ZipInfo(f"{name}/{path.name}", package.date.timetuple()[:6])
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3  # so that the mode counts
            entry.external_attr = FILE_MODE << 16
            archive.writestr(entry, path.read_bytes(), compresslevel=9)


def make_setup(package, folder):
    major, minor, patch = package.version.split(".")
    names = {"VERSION": package.version, "VERSION_NUMBERS": f"{major}.{minor}.0.{patch}",
             "STAGE": folder, "SIZE": kilobytes(folder.iterdir()), "REFERENCE": HERE,
             "PICTURES": ROOT / "data/icons",
             "TARGET": package.target / f"TINTLINE-{package.version}-setup.exe"}
    package.run("makensis", "-V2", "-WX", "-NOCD", "-INPUTCHARSET", "UTF8",
                *(f"-D{name}={value}" for name, value in names.items()), str(HERE / "setup.nsi"))


def zipped(text):
    return gzip.compress(text.encode("utf-8"), mtime=0)


def make_deb(package):
    root = package.work / "deb"
    documents = root / "usr/share/doc/tintline"
    licence = (ROOT / "LICENSE").read_text(encoding="utf-8").split("\n\n", 2)[2]
    licence = "\n".join(f" {line or '.'}" for line in licence.rstrip().split("\n"))
    changes = package.filled(HERE / "debian/changelog",
                             MAIL_DATE=email.utils.format_datetime(package.date))
    package.put(root / "usr/bin/tintline", package.native / "tintline", PROGRAM_MODE)
    for folder, name in (("man1", "tintline.1"), ("de/man1", "tintline.de.1")):
        package.put(root / "usr/share/man" / folder / "tintline.1.gz",
                    zipped(package.filled(HERE / "man" / name)))
    for place, name in (("bash-completion/completions/tintline", "tintline.bash"),
                        ("zsh/vendor-completions/_tintline", "_tintline"),
                        ("fish/vendor_completions.d/tintline.fish", "tintline.fish")):
        package.put(root / "usr/share" / place, HERE / name)
    package.put(documents / "copyright",
                package.filled(HERE / "debian/copyright", LICENSE=licence).encode("utf-8"))
    package.put(documents / "changelog.gz", zipped(changes))
    for example in (ROOT / "data/vb.ini", HERE / "TINTLINE.ini"):
        package.put(documents / "examples" / example.name, example)
    package.put(root / "usr/share/lintian/overrides/tintline", HERE / "debian/lintian-overrides")
    write_control(package, root)
    # One thread: more of them would cut the compressed data by the number of processors.
    package.run("dpkg-deb", "--root-owner-group", "-Zxz", "--threads-max=1", "--build", str(root),
                str(package.target / f"tintline_{package.version}_amd64.deb"))


def write_control(package, root):
    files = sorted(path for path in root.rglob("*") if path.is_file())
    sums = "".join(f"{hashlib.md5(path.read_bytes()).hexdigest()}  {path.relative_to(root)}\n"
                   for path in files)
    package.put(root / "DEBIAN/md5sums", sums.encode("utf-8"))
    package.put(root / "DEBIAN/control",
                package.filled(HERE / "debian/control", SIZE=kilobytes(files)).encode("utf-8"))
    for folder in [root, *(path for path in root.rglob("*") if path.is_dir())]:
        folder.chmod(FOLDER_MODE)


def main():
    parser = argparse.ArgumentParser(description="Makes the packages from built programs.")
    parser.add_argument("--native", type=Path, default=ROOT / "build/native", metavar="DIR")
    parser.add_argument("--windows", type=Path, default=ROOT / "build/windows", metavar="DIR")
    parser.add_argument("--target", type=Path, default=ROOT / "build/package", metavar="DIR")
    options = parser.parse_args()
    target = options.target.resolve()
    target.mkdir(parents=True, exist_ok=True)
    # All or nothing: what is there stays until the new packages are complete.
    with tempfile.TemporaryDirectory(dir=target, prefix="new-") as work:
        work = Path(work)
        finished = work / "finished"
        finished.mkdir()
        try:
            package = Package(options.native, options.windows, finished, work)
            folder = stage_windows(package)
            make_zip(package, folder)
            make_setup(package, folder)
            make_deb(package)
        except Missing as missing:
            sys.exit(f"package/build.py: {missing}")
        for path in sorted(finished.iterdir()):
            shutil.move(path, target / path.name)
            print(f"{target / path.name}  {(target / path.name).stat().st_size // 1024} KB")


main()
