"""Takes a picture of a report at a moment with something to see.

    report_picture.py PAGE.html PICTURE.png
"""

import base64
import os
import sys
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

WIDTH = 1400
SCALE = 1.25
# Three seconds of zooming out and sliding, at a tick.
MOMENT = """
Object.assign(report.state, {from: 14000, to: 20000, cursor: 16500});
document.dispatchEvent(new KeyboardEvent('keydown', {key: '.'}));
const done = arguments[0];
requestAnimationFrame(() => requestAnimationFrame(done));
"""


def take_picture(page, picture):
    with tempfile.TemporaryDirectory() as profile:
        options = webdriver.ChromeOptions()
        options.binary_location = "/usr/bin/chromium"
        for argument in ["--headless=new", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
                         "--disable-dev-shm-usage", f"--user-data-dir={profile}"]:
            options.add_argument(argument)
        browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        try:
            shoot(browser, page, picture)
        finally:
            browser.quit()


def shoot(browser, page, picture):
    def emulate(height):
        browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                {"width": WIDTH, "height": height, "deviceScaleFactor": SCALE,
                                 "mobile": False})

    emulate(1000)
    browser.get(f"file://{os.path.abspath(page)}")
    browser.execute_async_script(MOMENT)
    emulate(browser.execute_script("return document.documentElement.scrollHeight"))
    browser.execute_async_script(MOMENT)
    shot = browser.execute_cdp_cmd("Page.captureScreenshot", {"format": "png"})
    with open(picture, "wb") as file:
        file.write(base64.b64decode(shot["data"]))


take_picture(*sys.argv[1:3])
