"""A real browser without a window, for tests that look at pages as a reader gets them."""
import os
import signal
import subprocess

SECONDS = 60  # until a browser that hangs is given up
CHROMIUM = [
    "chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
    "--hide-scrollbars", "--allow-file-access-from-files",
]


def browse(arguments, folder):
    """Runs the browser, which keeps its profile in the folder; gives what it prints."""
    browser = subprocess.Popen([*CHROMIUM, f"--user-data-dir={folder / 'profile'}", *arguments],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                               start_new_session=True)
    try:
        output, _ = browser.communicate(timeout=SECONDS)
    except subprocess.TimeoutExpired:
        os.killpg(browser.pid, signal.SIGKILL)  # the browser is many processes
        raise
    assert browser.returncode == 0, f"{browser.args}: exit code {browser.returncode}"
    return output.decode("utf-8")


def take_picture(address, size, picture, folder):
    """Saves what the browser shows, `size` = (width, height) in pixels, as a PNG file."""
    picture.parent.mkdir(parents=True, exist_ok=True)
    width, height = size
    browse([f"--window-size={width},{height}", f"--screenshot={picture.resolve()}", address],
           folder)
    print(f"saved {picture}")
