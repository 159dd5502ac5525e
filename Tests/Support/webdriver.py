"""A browser that is driven by WebDriver, and a panel to drive it on. Needs only Python's own
library."""

import base64
import json
import os
import shutil
import signal
import subprocess
import tempfile
import time
import urllib.error
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"
KEYS = {"Left": "\ue012", "Up": "\ue013", "Right": "\ue014", "Down": "\ue015", "Home": "\ue011",
        "End": "\ue010", "Delete": "\ue017", "Enter": "\ue007", "Tab": "\ue004",
        "Escape": "\ue00c", "Control": "\ue009", "Shift": "\ue008"}


class Panel:
    """A running `tesselune panel` and its address."""

    def __init__(self, command, words, folder):
        self.process = subprocess.Popen([command, "panel", "--no-open", *words], cwd=folder,
                                        stdout=subprocess.PIPE, text=True)
        self.address = self.process.stdout.readline().strip()

    def close(self):
        """Ends the panel as Ctrl-C does. Returns the exit status."""
        self.process.send_signal(signal.SIGINT)
        self.process.stdout.close()
        return self.process.wait(20)

    def get(self, path):
        with urllib.request.urlopen(self.address + path) as answer:
            return answer.read()


class Browser:
    """Chromium without a window."""

    def __init__(self, width=1280, height=720):
        self.profile = tempfile.mkdtemp(prefix="tesselune-browser-")
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL, text=True,
                                       env={**os.environ, "HOME": self.profile})
        port = ""
        while not port:
            line = self.driver.stdout.readline()
            if not line:
                raise RuntimeError("chromedriver did not start")
            if "successfully on port" in line:
                port = line.rsplit(" ", 1)[1].strip().rstrip(".")
        self.base = f"http://127.0.0.1:{port}"
        arguments = ["--headless=new", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
                     "--disable-dev-shm-usage", "--force-device-scale-factor=1",
                     f"--user-data-dir={self.profile}/profile", f"--window-size={width},{height}"]
        session = self.call("POST", "/session", {"capabilities": {"alwaysMatch": {
            "goog:chromeOptions": {"args": arguments,
                                   "prefs": {"download.default_directory": self.profile}},
            "goog:loggingPrefs": {"browser": "ALL"}}}})
        self.base += "/session/" + session["sessionId"]
        self.call("POST", "/timeouts", {"script": 600000})
        self.resize(width, height)

    def close(self):
        try:
            self.call("DELETE", "")
        finally:
            self.driver.terminate()
            self.driver.wait()
            self.driver.stdout.close()
            shutil.rmtree(self.profile, ignore_errors=True)

    def call(self, method, path, body=None):
        data = json.dumps(body if body is not None else {}).encode() if method == "POST" else None
        request = urllib.request.Request(self.base + path, data, method=method,
                                         headers={"Content-Type": "application/json"})
        try:
            with urllib.request.urlopen(request, timeout=660) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

    def resize(self, width, height):
        """Sets the size of the page, not of the window."""
        self.call("POST", "/goog/cdp/execute", {
            "cmd": "Emulation.setDeviceMetricsOverride",
            "params": {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False}})

    def open(self, address):
        self.call("POST", "/url", {"url": address})
        self.wait("document.body && document.body.dataset.ready && "
                  "document.getElementById('stage').dataset.rests === 'true'")

    def leave(self):
        """Goes to an empty page and drops the console's messages so far."""
        self.call("POST", "/url", {"url": "about:blank"})
        self.complaints()

    def run(self, script, *arguments):
        return self.call("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def run_async(self, script, *arguments):
        """Runs `script` and returns the value with which it calls `done`."""
        return self.call("POST", "/execute/async", {
            "script": "const done = arguments[arguments.length - 1];" + script,
            "args": list(arguments)})

    def wait(self, condition, seconds=60):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if self.run(f"return Boolean({condition})"):
                return
            time.sleep(0.02)
        raise AssertionError(f"not in {seconds} s: {condition}")

    def find(self, selector):
        return self.call("POST", "/element", {"using": "css selector", "value": selector})[ELEMENT]

    def click(self, selector):
        self.call("POST", f"/element/{self.find(selector)}/click")

    def type(self, selector, text):
        """Replaces the text of an input and presses Enter."""
        element = self.find(selector)
        self.run("const e = document.querySelector(arguments[0]); e.focus(); e.select();", selector)
        self.call("POST", f"/element/{element}/value", {"text": text + KEYS["Enter"]})

    def file(self, selector, path):
        self.call("POST", f"/element/{self.find(selector)}/value", {"text": str(path)})

    def press(self, *keys):
        """Presses keys together, such as Ctrl and Z."""
        codes = [KEYS.get(key, key) for key in keys]
        actions = [{"type": "keyDown", "value": code} for code in codes]
        actions += [{"type": "keyUp", "value": code} for code in reversed(codes)]
        self.actions({"type": "key", "id": "keys", "actions": actions})

    def drag(self, selector, start, end, button_up=True):
        """Drags between two places within an element, given in shares of the element's size."""
        box = self.run("const b = document.querySelector(arguments[0]).getBoundingClientRect();"
                       "return [b.left, b.top, b.width, b.height]", selector)

        def move(place, duration=0):
            return {"type": "pointerMove", "duration": duration,
                    "x": round(box[0] + place[0] * box[2]), "y": round(box[1] + place[1] * box[3])}

        actions = [move(start), {"type": "pointerDown", "button": 0}, move(end, 200)]
        if button_up:
            actions.append({"type": "pointerUp", "button": 0})
        self.actions({"type": "pointer", "id": "mouse", "actions": actions})

    def hover(self, selector, x, y):
        self.actions({"type": "pointer", "id": "mouse", "actions": [
            {"type": "pointerMove", "duration": 0, "x": x, "y": y,
             "origin": {ELEMENT: self.find(selector)}}]})

    def actions(self, source):
        self.call("POST", "/actions", {"actions": [source]})

    def screenshot(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self.call("GET", "/screenshot")))

    def complaints(self):
        """Returns the errors and warnings that the console has received since the last call."""
        log = self.call("POST", "/se/log", {"type": "browser"})
        return [entry["message"] for entry in log if entry["level"] in ("SEVERE", "WARNING")]
