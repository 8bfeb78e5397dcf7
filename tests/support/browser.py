"""A real browser without a window, for tests that look at pages as a reader gets them."""
import base64
import contextlib
import json
import os
import select
import signal
import subprocess
import time

SECONDS = 60  # until a browser that hangs is given up
CHROMIUM = [
    "chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
    "--hide-scrollbars", "--allow-file-access-from-files",
]


class Browser:
    """One running browser, driven by the DevTools protocol through a pipe."""

    def __init__(self, folder):
        to_browser, self.requests = os.pipe()
        self.answers, from_browser = os.pipe()

        def connect():  # the protocol's ends are 3 and 4
            os.dup2(to_browser, 103)
            os.dup2(from_browser, 4)
            os.dup2(103, 3)

        self.process = subprocess.Popen(
            [*CHROMIUM, "--remote-debugging-pipe", f"--user-data-dir={folder / 'profile'}"],
            preexec_fn=connect, close_fds=False, start_new_session=True,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.last, self.buffer, self.session = 0, b"", None
        self.events = []
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target,
                                 flatten=True)["sessionId"]
        self.call("Page.enable")
        self.call("Runtime.enable")

    def close(self):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self.process.pid, signal.SIGKILL)  # the browser is many processes
        self.process.wait()
        os.close(self.requests)
        os.close(self.answers)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def call(self, method, **parameters):
        """The answer of a method; events that come before it are kept."""
        self.last += 1
        request = {"id": self.last, "method": method, "params": parameters}
        if self.session:
            request["sessionId"] = self.session
        text = json.dumps(request).encode() + b"\0"
        while text:
            text = text[os.write(self.requests, text):]
        while True:
            message = self._message()
            if message.get("id") == self.last:
                assert "error" not in message, f"{method}: {message['error']}"
                return message["result"]
            self.events.append(message)

    def _message(self):
        end = time.monotonic() + SECONDS
        while b"\0" not in self.buffer:
            ready, _, _ = select.select([self.answers], [], [], max(0, end - time.monotonic()))
            assert ready, "the browser does not answer"
            piece = os.read(self.answers, 1 << 20)
            assert piece, "the browser ended"
            self.buffer += piece
        message, _, self.buffer = self.buffer.partition(b"\0")
        return json.loads(message)

    def open(self, address):
        """Shows a page, and waits until it is loaded; another place in it needs no loading."""
        self.events.clear()
        if "loaderId" not in self.call("Page.navigate", url=address):
            return
        while not any(event["method"] == "Page.loadEventFired" for event in self.events):
            self.events.append(self._message())

    def run(self, script):
        """The value of an expression in the page, also of a promise."""
        result = self.call("Runtime.evaluate", expression=script, awaitPromise=True,
                           returnByValue=True)
        assert "exceptionDetails" not in result, result["exceptionDetails"]
        return result["result"].get("value")

    def picture(self, path, width, height):
        """Saves what the page shows in a window of that size."""
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=False)
        data = self.call("Page.captureScreenshot")["data"]
        path.write_bytes(base64.b64decode(data))
