# Chromium without a window, driven over its debugging pipe.
import base64
import json
import os
import select
import subprocess
import tempfile
import time

MOST_SECONDS = 60  # for one answer of the browser


class Browser:
    """One page at a time. What goes wrong in it is gathered in `problems`."""

    def __init__(self, program):
        self._profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        to_browser, self._out = os.pipe()
        self._in, from_browser = os.pipe()

        def as_descriptors_3_and_4():
            # Moved out of the way first, in case one of them is the other's new number.
            reading, writing = os.dup(to_browser), os.dup(from_browser)
            os.dup2(reading, 3)
            os.dup2(writing, 4)

        self._process = subprocess.Popen(
            [program, "--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
             "--no-first-run", "--remote-debugging-pipe", "--user-data-dir=" + self._profile.name,
             "about:blank"],
            preexec_fn=as_descriptors_3_and_4, close_fds=False, stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self._buffer = b""
        self._number = 0
        self._loaded = False
        self._session = None
        self._measures = False
        self.problems = []
        self.requests = []
        targets = self.send("Target.getTargets")["targetInfos"]
        page = next(target for target in targets if target["type"] == "page")
        self._session = self.send("Target.attachToTarget", targetId=page["targetId"],
                                  flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.send(domain + ".enable")

    def close(self):
        try:
            self._session = None
            self.send("Browser.close")
            self._process.wait(timeout=10)
        finally:
            self._process.kill()
            self._process.wait()
            os.close(self._out)
            os.close(self._in)
            self._profile.cleanup()

    def send(self, method, **parameters):
        """Calls a method of the browser and returns its result."""
        self._number += 1
        message = {"id": self._number, "method": method, "params": parameters}
        if self._session:
            message["sessionId"] = self._session
        data = json.dumps(message).encode() + b"\0"
        while data:
            data = data[os.write(self._out, data):]
        while True:
            answer = self._receive()
            if answer.get("id") == self._number:
                if "error" in answer:
                    raise RuntimeError(method + ": " + answer["error"]["message"])
                return answer["result"]

    def open(self, path, width=1280, height=800, dark=False):
        """Loads a file as a page of this size."""
        self.send("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=width < 600)
        self.send("Emulation.setEmulatedMedia", features=[
            {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])
        self.problems.clear()
        self.requests.clear()
        self._load("Page.navigate", url="about:blank")  # so that the next one is a load in any case
        self._load("Page.navigate", url=path.absolute().as_uri())

    def reload(self):
        self._load("Page.reload")

    def _load(self, method, **parameters):
        self._loaded = False
        self.send(method, **parameters)
        while not self._loaded:
            self._receive()
        self.settle()

    def settle(self):
        """Waits until the page has drawn what it knows of."""
        self.value("new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done)))")

    def value(self, expression):
        """What a JavaScript expression comes to in the page."""
        result = self.send("Runtime.evaluate", expression=expression, awaitPromise=True,
                           returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError(json.dumps(result["exceptionDetails"]))
        return result["result"].get("value")

    def processor_seconds(self):
        """What the page's own thread has worked so far, whatever else the machine does."""
        if not self._measures:
            self.send("Performance.enable", timeDomain="threadTicks")
            self._measures = True
        metrics = self.send("Performance.getMetrics")["metrics"]
        return next(one["value"] for one in metrics if one["name"] == "TaskDuration")

    def press(self, key):
        text = {"Enter": "\r"}.get(key, key if len(key) == 1 else "")
        self.send("Input.dispatchKeyEvent", type="keyDown", key=key, code=key, text=text)
        self.send("Input.dispatchKeyEvent", type="keyUp", key=key, code=key)
        self.settle()

    def middle_of(self, selector):
        """The middle of the first element of this kind, brought in sight."""
        return self.value("""(() => {
          const element = document.querySelector(%s);
          element.scrollIntoView({block: "nearest"});
          const box = element.getBoundingClientRect();
          return [box.left + box.width / 2, box.top + box.height / 2];
        })()""" % json.dumps(selector))

    def _mouse(self, kind, x, y, **more):
        self.send("Input.dispatchMouseEvent", type=kind, x=x, y=y, **more)

    def click(self, selector):
        self.click_at(*self.middle_of(selector))

    def click_at(self, x, y):
        """Presses as a mouse does."""
        for kind in ("mousePressed", "mouseReleased"):
            self._mouse(kind, x, y, button="left", clickCount=1)
        self.settle()

    def double_click(self, selector):
        x, y = self.middle_of(selector)
        for count in (1, 2):
            for kind in ("mousePressed", "mouseReleased"):
                self._mouse(kind, x, y, button="left", clickCount=count)
        self.settle()

    def hover(self, selector):
        self._mouse("mouseMoved", *self.middle_of(selector))
        self.settle()

    def drag(self, selector, right, down):
        x, y = self.middle_of(selector)
        self._mouse("mousePressed", x, y, button="left", clickCount=1)
        self._mouse("mouseMoved", x + right, y + down, button="left", buttons=1)
        self._mouse("mouseReleased", x + right, y + down, button="left", clickCount=1)
        self.settle()

    def wheel(self, selector, down):
        x, y = self.middle_of(selector)
        self._mouse("mouseWheel", x, y, deltaX=0, deltaY=down)
        self.settle()

    def touch(self, selector, right, down):
        """A finger that moves over an element."""
        x, y = self.middle_of(selector)
        for kind, points in [("touchStart", [{"x": x, "y": y}]),
                             ("touchMove", [{"x": x + right, "y": y + down}]), ("touchEnd", [])]:
            self.send("Input.dispatchTouchEvent", type=kind, touchPoints=points)
        self.settle()

    def pinch(self, selector, before, after):
        """Two fingers that move from one distance to another."""
        x, y = self.middle_of(selector)
        for kind, gap in (("touchStart", before), ("touchMove", after), ("touchEnd", None)):
            points = [] if gap is None else [{"x": x - gap / 2, "y": y, "id": 0},
                                             {"x": x + gap / 2, "y": y, "id": 1}]
            self.send("Input.dispatchTouchEvent", type=kind, touchPoints=points)
        self.settle()

    def type(self, text):
        self.send("Input.insertText", text=text)
        self.settle()

    def screenshot(self, path):
        path.write_bytes(base64.b64decode(self.send("Page.captureScreenshot")["data"]))

    def _receive(self):
        end = time.monotonic() + MOST_SECONDS
        while b"\0" not in self._buffer:
            ready, _, _ = select.select([self._in], [], [], max(0, end - time.monotonic()))
            data = os.read(self._in, 1 << 20) if ready else b""
            if not data:
                raise RuntimeError("the browser does not answer")
            self._buffer += data
        message, self._buffer = self._buffer.split(b"\0", 1)
        message = json.loads(message)
        event, about = message.get("method"), message.get("params")
        if event == "Page.loadEventFired":
            self._loaded = True
        elif event == "Runtime.exceptionThrown":
            self.problems.append(about["exceptionDetails"])
        elif event == "Runtime.consoleAPICalled":
            self.problems.append(about["args"])
        elif event == "Log.entryAdded":
            self.problems.append(about["entry"])
        elif event == "Page.javascriptDialogOpening":
            self.problems.append(about)
            raise RuntimeError("the page opened a dialog: " + about["message"])
        elif event == "Network.requestWillBeSent":
            self.requests.append(about["request"]["url"])
        return message
