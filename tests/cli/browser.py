"""A browser without a window, driven through a pair of pipes: Chromium as Debian has it."""

import base64
import fcntl
import json
import os
import select
import shutil
import subprocess
import tempfile
import time

SECONDS = 60  # that an answer may take


def pipe_above(lowest):
    """A pipe whose ends are none of the numbers that the browser wants."""
    ends = os.pipe()
    moved = [fcntl.fcntl(end, fcntl.F_DUPFD, lowest) for end in ends]
    for end in ends:
        os.close(end)
    return moved


class Browser:
    """One page. What it says on the console, asks of the network and asks the user is kept."""

    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="browser")
        to_read, self.to = pipe_above(10)
        self.back, back_write = pipe_above(10)
        options = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                   "--remote-debugging-pipe", f"--user-data-dir={self.folder}", "about:blank"]
        start = f'exec "$@" 3<&{to_read} 4>&{back_write}'
        self.process = subprocess.Popen(
            ["/bin/bash", "-c", start, "-", shutil.which("chromium") or "chromium", *options],
            pass_fds=(to_read, back_write), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            env={**os.environ, "HOME": self.folder})
        os.close(to_read)
        os.close(back_write)
        self.bytes, self.number, self.session = b"", 0, None
        self.complaints, self.requests = [], []
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable")

    def close(self):
        self.process.kill()
        self.process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def message(self, until):
        while b"\0" not in self.bytes:
            if not select.select([self.back], [], [], max(0, until - time.monotonic()))[0]:
                raise TimeoutError("the browser does not answer")
            more = os.read(self.back, 1 << 20)
            if not more:
                raise EOFError("the browser has ended")
            self.bytes += more
        whole, self.bytes = self.bytes.split(b"\0", 1)
        return json.loads(whole)

    def take_event(self, message):
        name, what = message.get("method"), message.get("params", {})
        if name in ("Log.entryAdded", "Runtime.exceptionThrown", "Runtime.consoleAPICalled",
                    "Page.javascriptDialogOpening"):
            self.complaints.append(what)
        if name == "Network.requestWillBeSent":
            self.requests.append(what["request"]["url"])

    def call(self, method, **what):
        self.number += 1
        order = {"id": self.number, "method": method, "params": what}
        if self.session:
            order["sessionId"] = self.session
        os.write(self.to, json.dumps(order).encode() + b"\0")
        until = time.monotonic() + SECONDS
        while True:
            message = self.message(until)
            if message.get("id") == self.number:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']}")
                return message["result"]
            self.take_event(message)

    def js(self, expression):
        result = self.call("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"])
        return result["result"].get("value")

    def wait(self, expression):
        """Waits until the expression is true; an assertion fails when it does not become so."""
        until = time.monotonic() + 10
        while not self.js(expression):
            assert time.monotonic() < until, f"{expression} (at {self.js('location.href')})"
            time.sleep(0.02)

    def open(self, path, fragment=""):
        self.call("Page.navigate", url="about:blank")
        self.wait("location.href === 'about:blank'")
        self.call("Page.navigate", url=f"file://{path}{fragment}")
        self.wait("location.protocol === 'file:' && document.readyState === 'complete'")

    def size(self, width, height):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=False)

    def media(self, kind="", scheme="light"):
        self.call("Emulation.setEmulatedMedia", media=kind,
                  features=[{"name": "prefers-color-scheme", "value": scheme}])

    def click(self, selector):
        place = self.js(f"(() => {{ const e = document.querySelector({json.dumps(selector)});"
                        "e.scrollIntoView({block: 'nearest'});"
                        "const r = e.getClientRects()[0];"
                        "return [r.left + r.width / 2, r.top + r.height / 2] })()")
        for kind in ("mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent", type=kind, x=place[0], y=place[1], button="left",
                      clickCount=1)

    def key(self, name, text="", code=0):
        self.call("Input.dispatchKeyEvent", type="keyDown", key=name, text=text,
                  windowsVirtualKeyCode=code)
        self.call("Input.dispatchKeyEvent", type="keyUp", key=name, windowsVirtualKeyCode=code)

    def type(self, text):
        for ch in text:
            self.key(ch, ch)

    def back_or_forward(self, by):
        history = self.call("Page.getNavigationHistory")
        entry = history["entries"][history["currentIndex"] + by]
        self.call("Page.navigateToHistoryEntry", entryId=entry["id"])

    def picture(self, path):
        data = self.call("Page.captureScreenshot")["data"]
        with open(path, "wb") as file:
            file.write(base64.b64decode(data))

    def printed(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self.call("Page.printToPDF")["data"]))
