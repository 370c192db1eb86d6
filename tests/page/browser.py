"""A headless Chromium for the tests of pages."""
import contextlib
import json
import pathlib
import time

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By

PROGRAM = "/usr/bin/chromium"
DRIVER = "/usr/bin/chromedriver"


class Browser:
    """A page at a time, with all that it asks for and complains about."""

    def __init__(self, scripts=True, dark=False, width=1280, height=900):
        options = Options()
        options.binary_location = PROGRAM
        for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                         "--hide-scrollbars", "--force-device-scale-factor=1", f"--window-size={width},{height}"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        if not scripts:
            options.add_experimental_option("prefs", {"webkit.webprefs.javascript_enabled": False,
                                                      "profile.managed_default_content_settings.javascript": 2})
        self.driver = webdriver.Chrome(service=Service(DRIVER), options=options)
        self.driver.set_script_timeout(300)
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": "dark" if dark else "light"}]})
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})

    def open(self, page, fragment=""):
        self.driver.get_log("performance")
        self.driver.get(pathlib.Path(page).resolve().as_uri() + fragment)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def one(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def texts(self, selector):
        # At once: the page may replace what is found.
        return self.run("return [...document.querySelectorAll(arguments[0])].map(each => each.innerText.trim())",
                        selector)

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def wait(self, condition, seconds=20):
        """For what the page does a moment later."""
        end = time.monotonic() + seconds
        while not condition():
            assert time.monotonic() < end, "it does not happen"
            time.sleep(0.01)

    def complaints(self):
        return [entry["message"] for entry in self.driver.get_log("browser")]

    def requests(self):
        """The addresses that were asked for since the page was opened."""
        events = [json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance")]
        return [event["params"]["request"]["url"] for event in events
                if event["method"] == "Network.requestWillBeSent"]


@contextlib.contextmanager
def browser(**options):
    opened = Browser(**options)
    try:
        yield opened
    finally:
        opened.driver.quit()
