"""A headless Chromium, spoken to over the DevTools protocol by way of two pipes: messages are JSON, each ended by a zero.

`--remote-debugging-pipe` has the browser read messages from descriptor 3 and write them to descriptor 4, so no port is
opened and the standard library is enough. Everything has a time limit, and the profile is a folder of its own.
"""

import base64
import hashlib
import json
import os
import select
import shutil
import subprocess
import tempfile
import time

CHROMIUM = next(filter(None, map(shutil.which, ("chromium", "chromium-browser"))), None)
NOT_RUN = 77  # what ctest counts as skipped
LIMIT = 90.0  # seconds for one answer: drawing in software takes its time

OPTIONS = ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--no-first-run", "--disable-extensions",
           "--disable-background-networking", "--disable-component-update", "--use-gl=angle", "--use-angle=swiftshader",
           "--enable-unsafe-swiftshader", "--hide-scrollbars", "--remote-debugging-pipe")


class Browser:
    """One page in one browser; use it in a `with` statement."""

    def __init__(self, width=1400, height=900):
        self._profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        to_browser, self._write = os.pipe()
        self._read, from_browser = os.pipe()
        self._process = subprocess.Popen(
            ["sh", "-c", f'exec "$@" 3<&{to_browser} 4>&{from_browser}', "sh", CHROMIUM, *OPTIONS,
             f"--window-size={width},{height}", f"--user-data-dir={self._profile.name}", "about:blank"],
            pass_fds=(to_browser, from_browser), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self._buffer, self._number, self._session, self.events = b"", 0, None, []
        try:
            self._attach(width, height)
        except BaseException:
            self.__exit__()
            raise

    def _attach(self, width, height):
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self._session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Network", "Log"):
            self.call(domain + ".enable")
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait()
        os.close(self._write)
        os.close(self._read)
        self._profile.cleanup()

    def _message(self, until):
        while b"\0" not in self._buffer:
            ready, _, _ = select.select([self._read], [], [], max(0.0, until - time.monotonic()))
            part = os.read(self._read, 1 << 20) if ready else b""
            if not part:
                raise TimeoutError("the browser does not answer")
            self._buffer += part
        message, self._buffer = self._buffer.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, **parameters):
        """Sends a command and returns its result; what is reported meanwhile is kept in `events`."""
        self._number += 1
        command = {"id": self._number, "method": method, "params": parameters}
        if self._session:
            command["sessionId"] = self._session
        data = json.dumps(command).encode() + b"\0"
        while data:
            data = data[os.write(self._write, data):]
        until = time.monotonic() + LIMIT
        while True:
            message = self._message(until)
            if message.get("id") == self._number:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']}")
                return message["result"]
            self.events.append(message)

    def open(self, path):
        self.call("Page.navigate", url=path.resolve().as_uri())
        until = time.monotonic() + LIMIT
        while self.evaluate("document.readyState") != "complete":
            if time.monotonic() > until:
                raise TimeoutError("the page does not load")
            time.sleep(0.05)

    def evaluate(self, expression):
        answer = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in answer:
            raise RuntimeError(str(answer["exceptionDetails"]))
        return answer["result"].get("value")

    def screenshot(self, place=None):
        """What is seen in the window, or at a place in it, as the bytes of a PNG."""
        more = {}
        if place:  # the protocol counts from the corner of the page, whatever part of it the window shows
            scrolled = self.evaluate("({x: scrollX, y: scrollY})")
            more["clip"] = {**place, "x": place["x"] + scrolled["x"], "y": place["y"] + scrolled["y"], "scale": 1}
        return base64.b64decode(self.call("Page.captureScreenshot", format="png", **more)["data"])

    def look(self, place):
        """A digest of what is seen at a place in the window: two looks differ when a pixel does."""
        return hashlib.sha256(self.screenshot(place)).hexdigest()

    def drag(self, start, end, steps=8):
        """Presses at one place, moves to the other, lets go: real pointer events."""
        def send(kind, x, y, buttons):
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", buttons=buttons, clickCount=1)
        send("mousePressed", *start, 1)
        for i in range(1, steps + 1):
            send("mouseMoved", *(a + (b - a) * i / steps for a, b in zip(start, end)), 1)
        send("mouseReleased", *end, 0)

    def wheel(self, x, y, amount):
        self.call("Input.dispatchMouseEvent", type="mouseWheel", x=x, y=y, deltaX=0, deltaY=amount)

    def faults(self):
        """What the page complained about, and what it asked a network for."""
        found = []
        for event in self.events:
            method, parameters = event.get("method"), event.get("params", {})
            if method == "Runtime.exceptionThrown":
                found.append(parameters["exceptionDetails"]["text"])
            if method == "Log.entryAdded" and parameters["entry"]["level"] == "error":
                found.append(parameters["entry"]["text"])
            if method == "Network.requestWillBeSent" and not parameters["request"]["url"].startswith(("file:", "data:", "blob:")):
                found.append("asked for " + parameters["request"]["url"])
        return found
