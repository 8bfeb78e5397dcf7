"""A Wine prefix of one's own, to install programs in."""
import os
import re
import shutil
import subprocess
import time
from pathlib import Path

SECONDS = 120
BASE = Path("build/wine").resolve()  # made by cmake/wine-run.sh
MENU = {"user": r"AppData\Roaming\Microsoft\Windows\Start Menu\Programs",
        "all": r"C:\ProgramData\Microsoft\Windows\Start Menu\Programs"}


class Prefix:
    def __init__(self, folder):
        if not (BASE / "prefix").exists():
            subprocess.run(["cmake/wine-run.sh", "cmd", "/c", "rem"], check=True, timeout=300,
                           stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
            subprocess.run(["cmake/wine-run.sh", "--stop"], check=True, timeout=SECONDS)
        # Links take no time and no room; only the registry is written in place.
        subprocess.run(["cp", "-al", BASE / "prefix", folder], check=True)
        for registry in (BASE / "prefix").glob("*.reg"):
            (folder / registry.name).unlink()
            shutil.copyfile(registry, folder / registry.name)
        self.folder = folder
        self.environment = {
            **os.environ, "WINEPREFIX": str(folder), "HOME": str(BASE / "home"),
            "LOCPATH": str(BASE / "locale"), "LC_ALL": "de_DE.UTF-8", "WINEDEBUG": "-all",
            "WINEARCH": "win64", "WINEDLLOVERRIDES": "winemenubuilder.exe=d;mscoree=d"}
        self.environment.pop("DISPLAY", None)
        # Wine's own processes keep the streams of the program that starts them.
        silent = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL,
                  "stderr": subprocess.DEVNULL, "env": self.environment, "timeout": SECONDS}
        subprocess.run(["wineserver", "-p60"], check=True, **silent)
        subprocess.run(["wine", "cmd", "/c", "rem"], check=True, **silent)
        self.home = self.run("cmd", "/c", "echo %USERPROFILE%").strip()
        self.local_data = self.home + r"\AppData\Local"
        # Of a program in a folder that its user may not write.
        self.user_settings = self.path(self.home + r"\AppData\Roaming\TINTLINE\TINTLINE.ini")

    def path(self, windows_path):
        assert windows_path.startswith("C:\\"), windows_path
        return self.folder / "drive_c" / windows_path[3:].replace("\\", "/")

    def run(self, *command, code=0):
        """Runs a program that must end with that exit code, gives its output."""
        done = subprocess.run(["wine", *map(str, command)], env=self.environment, timeout=SECONDS,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL)
        text = done.stdout.decode("utf-8", "replace")
        assert done.returncode == code, f"{command}: exit code {done.returncode}\n{text}"
        return text

    def start(self, *command):
        return subprocess.Popen(["wine", *command], env=self.environment, stdin=subprocess.PIPE,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def registry(self, root, key):
        """The values of a key by their names, "" for the default; {} when it is missing."""
        done = subprocess.run(["wine", "reg", "query", rf"{root}\{key}"], env=self.environment,
                              timeout=SECONDS, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL)
        lines = done.stdout.decode("cp850", "replace").replace("\r", "")
        values = re.findall(r"^    (.*?)    REG_\w+ ?   (.*)$", lines, re.M)
        return {"" if name.startswith("(") else name: value for name, value in values}

    def start_menu(self, whose):
        folder = self.path(MENU["all"] if whose == "all" else rf"{self.home}\{MENU['user']}")
        return {path.name for path in folder.glob("*.lnk")} if folder.exists() else set()

    def everything(self):
        """All files and folders, but for those that programs leave for the system to clear."""
        drive = self.folder / "drive_c"
        return {name for name in (str(path.relative_to(drive)) for path in drive.rglob("*"))
                if "/Temp/" not in name}

    def wait_for_copy(self):
        """Until the copy of an uninstaller, which does the work, has ended."""
        for _ in range(200):
            if "Un_" not in self.run("tasklist") and "Au_" not in self.run("tasklist"):
                return
            time.sleep(0.05)

    def close(self):
        subprocess.run(["wineserver", "-k"], env=self.environment, check=False, timeout=SECONDS)
