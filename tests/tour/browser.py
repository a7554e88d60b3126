#!/usr/bin/env python3
"""Pays on a page as a person does: opens it in a Chromium without a window, presses its button, waits for the thanks.

Usage: browser.py PAGE. Ends with 0 once the page says that it is paid, with 3 where Chromium cannot be started, and
with 1 when the page is not what was expected.
"""
import json
import os
import subprocess
import sys
import tempfile

LOAD = "Page.loadEventFired"


class Browser:
    """Chromium steered over a pair of pipes: one message is one JSON text and a zero byte."""

    def __init__(self, profile):
        to_browser, self.out = os.pipe()
        self.inward, from_browser = os.pipe()
        flags = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                 "--disable-background-networking", "--disable-component-update", "--disable-sync",
                 "--password-store=basic",
                 "--user-data-dir=" + profile, "--remote-debugging-pipe", "about:blank"]

        # Chromium reads its messages at descriptor 3 and writes at 4; both ends are moved out of the way first.
        def place():
            read_end, write_end = os.dup(to_browser), os.dup(from_browser)
            os.dup2(read_end, 3)
            os.dup2(write_end, 4)

        # The desktop of the tour is not its own: there it would wake the key store, which asks and waits.
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "XDG_RUNTIME_DIR")}
        self.process = subprocess.Popen(["chromium"] + flags, preexec_fn=place, close_fds=False, env=environment,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.read = b""
        self.number = 0
        self.events = []

    def message(self):
        while b"\0" not in self.read:
            more = os.read(self.inward, 65536)
            if not more:
                raise EOFError
            self.read += more
        text, self.read = self.read.split(b"\0", 1)
        return json.loads(text)

    def call(self, method, session=None, **parameters):
        self.number += 1
        order = {"id": self.number, "method": method, "params": parameters}
        if session:
            order["sessionId"] = session
        os.write(self.out, json.dumps(order).encode() + b"\0")
        while True:
            told = self.message()
            if told.get("id") == self.number:
                if "error" in told:
                    raise RuntimeError(told["error"]["message"])
                return told["result"]
            self.events.append(told.get("method"))

    def wait_for(self, event):
        while event not in self.events:
            self.events.append(self.message().get("method"))
        self.events.clear()

    def value(self, session, expression):
        return self.call("Runtime.evaluate", session, expression=expression)["result"].get("value")


def pay(browser, page):
    target = browser.call("Target.createTarget", url="about:blank")["targetId"]
    session = browser.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
    browser.call("Page.enable", session)
    browser.events.clear()
    browser.call("Page.navigate", session, url=page)
    browser.wait_for(LOAD)
    print("page: " + str(browser.value(session, "document.title")))
    if not browser.value(session, "!!document.getElementById('pay')"):
        return 1
    browser.value(session, "document.getElementById('pay').click()")
    browser.wait_for(LOAD)
    print("page: " + str(browser.value(session, "document.title")))
    return 0 if browser.value(session, "!!document.getElementById('paid')") else 1


def main():
    with tempfile.TemporaryDirectory(prefix="sorvan-browser-", ignore_cleanup_errors=True) as profile:
        try:
            browser = Browser(profile)
            browser.call("Browser.getVersion")
        except (OSError, EOFError):
            return 3
        try:
            return pay(browser, sys.argv[1])
        except (EOFError, RuntimeError) as failure:
            print("browser: %r" % failure)
            return 1
        finally:
            browser.process.kill()
            browser.process.wait()


sys.exit(main())
