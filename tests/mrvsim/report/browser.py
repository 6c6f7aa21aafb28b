#!/usr/bin/python3
"""Opens reports in a browser: they load without an error and without a request, show the numbers of
the log, and react to mouse, keys and fingers.

    browser.py MRVSIM SCENARIOS
"""

import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from collections import Counter

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

MRVSIM, SCENARIOS = sys.argv[1:3]
DESKTOP = {"width": 1440, "height": 1000, "deviceScaleFactor": 1, "mobile": False}
PHONE = {"width": 390, "height": 844, "deviceScaleFactor": 3, "mobile": True}
COMMAND_KEY = 0x100000
HOSTILE_TEXT = "</script><img src=x onerror=alert(1)>"


def start_browser(folder):
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for argument in ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                     "--disable-background-networking", "--no-first-run", "--disable-extensions",
                     f"--user-data-dir={folder}/profile"]:
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


def lines_of(log):
    return [json.loads(line) for line in log.splitlines()]


def is_sample(line):
    return line["what"] == "posted" and line["class"] == "mrvE" and line["kind"] == 2


def is_zoom(tick):
    sideways = len(tick["wheels"]) > 1 or tick["flags"] & COMMAND_KEY
    return not sideways and abs(tick["wheels"][0]) == 1


def is_failure(line):
    return line.get("value" if line["what"] == "result" else "result", 0) != 0


def counts_of(lines):
    """What the page counts, counted in the log."""
    what = Counter(line["what"] for line in lines)
    ticks = [line for line in lines if line["what"] == "wheel"]
    zooms = [tick for tick in ticks if is_zoom(tick)]
    brush_keys = [line for line in lines
                  if line["what"] == "posted" and line["class"] == "keyb" and line["kind"] == 1]
    clicks = [line for line in lines if line["what"] == "click"]
    return {
        "samples": sum(map(is_sample, lines)),
        "zoomTicks": len(zooms),
        "zoomInTicks": sum(tick["wheels"][0] > 0 for tick in zooms),
        "panTicks": len(ticks) - len(zooms),
        "brushKeys": len(brush_keys),
        "keysLeftDown": 0,
        "clicks": len(clicks),
        "clicksHeldBack": sum(not click["passed"] for click in clicks),
        "failures": sum(is_failure(line) for line in lines if line["what"] != "misuse"),
        "misuses": what["misuse"],
    }


def axes_of(line):
    """In the order of the scenario's axes."""
    values = {name: value for name, _, value in line["parameters"]}
    return [values[name] for name in ("tpnx", "tpnz", "tpny", "trtx", "trtz", "trty")]


class Report(unittest.TestCase):
    summaries = {}  # of the scenarios that were played

    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory(prefix="mrvsim-browser-")
        cls.folder = cls.temporary.name
        cls.browser = start_browser(cls.folder)

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        cls.temporary.cleanup()

    def setUp(self):
        self.emulate(DESKTOP)

    def tearDown(self):
        self.assertEqual(self.browser.get_log("browser"), [], "messages on the console")

    def emulate(self, device, scheme="light"):
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", device)
        self.browser.execute_cdp_cmd(
            "Emulation.setEmulatedMedia",
            {"features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def play(self, *names):
        """Opens the report of scenarios; returns the lines of their log, and their summary."""
        files = [os.path.join(SCENARIOS, name) for name in names]
        log, page = (os.path.join(self.folder, "+".join(names) + end) for end in (".log", ".html"))
        if names not in self.summaries:
            finished = subprocess.run([MRVSIM, "play", *files, "--log", log, "--report", page,
                                       "--summary"], check=True, capture_output=True, text=True)
            self.summaries[names] = finished.stdout
        self.open(page)
        with open(log, encoding="utf-8") as file:
            return lines_of(file.read()), self.summaries[names]

    def show(self, lines):
        """Opens the report of a log."""
        log = "".join(json.dumps(line) + "\n" for line in lines)
        page = os.path.join(self.folder, "page.html")
        subprocess.run([MRVSIM, "report", "-", page], check=True, input=log, text=True)
        self.open(page)

    def open(self, page):
        self.browser.get_log("performance")
        self.browser.get(f"file://{page}")
        self.settle()

    def run_script(self, script):
        return self.browser.execute_script(script)

    def settle(self):
        """Waits until what changed is drawn."""
        self.browser.execute_async_script(
            "const done = arguments[0]; requestAnimationFrame(() => requestAnimationFrame(done));")

    def state(self, name):
        return self.run_script(f"return report.state.{name}")

    def press(self, *keys):
        ActionChains(self.browser, duration=0).send_keys(*keys).perform()
        self.settle()

    def text(self, element):
        return self.browser.find_element(By.ID, element).text

    def click(self, element):
        self.browser.find_element(By.ID, element).click()
        self.settle()

    def point(self, x, y, action="click"):
        """Does something with the mouse on the chart, at a place in pixels from its corner."""
        chart = self.browser.find_element(By.ID, "chart")
        size = chart.size
        chain = ActionChains(self.browser, duration=0).move_to_element_with_offset(
            chart, x - size["width"] // 2, y - size["height"] // 2)
        if action == "click":
            chain.click()
        chain.perform()
        self.settle()

    def touch(self, kind, *places):
        box = self.run_script("const b = document.getElementById('chart').getBoundingClientRect();"
                              "return [b.left, b.top]")
        points = [{"x": box[0] + x, "y": box[1] + y, "id": i} for i, (x, y) in enumerate(places)]
        self.browser.execute_cdp_cmd("Input.dispatchTouchEvent",
                                     {"type": kind, "touchPoints": points})

    def assert_counts(self, lines):
        counts = self.run_script("return report.countsOf(report.state.play)")
        counts.pop("dropped")
        self.assertEqual(counts, counts_of(lines))

    def test_loads_nothing_but_itself(self):
        self.play("clicks.json")
        messages = [json.loads(entry["message"])["message"]
                    for entry in self.browser.get_log("performance")]
        requests = [message["params"]["request"]["url"] for message in messages
                    if message["method"] == "Network.requestWillBeSent"]
        self.assertEqual([url.split(":")[0] for url in requests], ["file"])

    def test_shows_the_numbers_of_a_minute(self):
        lines, summary = self.play("flight.json")
        self.assert_counts(lines)
        dropped = self.run_script("return report.countsOf(report.state.play).dropped")
        self.assertEqual(str(dropped), re.search(r"(\d+) samples without effect", summary)[1])
        verdict = self.text("verdict")
        self.assertEqual(verdict, summary.splitlines()[0])
        axes = self.run_script("return report.state.play.samples.axes.map((axis) => [...axis])")
        expected = zip(*(axes_of(line) for line in lines if is_sample(line)))
        self.assertEqual(axes, [list(axis) for axis in expected])

    def test_shows_the_views_and_clicks_of_a_scenario(self):
        lines, _ = self.play("clicks.json")
        self.assert_counts(lines)
        lines, _ = self.play("view.json")
        self.assert_counts(lines)
        shown = self.run_script("const {zoom, x, y, brush} = report.state.play.views;"
                                "return [...zoom].map((z, i) => [z, x[i], y[i], brush[i]])")
        views = [line for line in lines if line["what"] == "view"]
        self.assertEqual(len(shown), len(views))
        for (zoom, x, y, brush), view in zip(shown, views):
            self.assertAlmostEqual(zoom, view["zoom"], delta=0.0001)
            self.assertAlmostEqual(x, view["origin"][0], delta=0.06)
            self.assertAlmostEqual(y, view["origin"][1], delta=0.06)
            self.assertAlmostEqual(brush, view["brush"], delta=0.06)

    def test_lists_what_failed_and_goes_there(self):
        lines, _ = self.play("tool-lookup-fails.json")
        self.assert_counts(lines)
        failures = [line for line in lines if is_failure(line)]
        entries = self.browser.find_elements(By.CSS_SELECTOR, "#problems button")
        self.assertEqual(len(entries), len(failures))
        self.press("m")
        self.assertEqual(self.state("cursor"), failures[0]["t"])
        self.assertIn("error", self.text("event-text"))

    def test_shows_misuses_in_red_as_text(self):
        self.show([{"t": 0, "what": "result", "value": 0},
                   {"t": 5000, "what": "misuse", "text": HOSTILE_TEXT},
                   {"t": 9000, "what": "misuse", "text": "leaked a window"}])
        entry = self.browser.find_element(By.CSS_SELECTOR, "#problems button.misuse")
        self.assertIn(HOSTILE_TEXT, entry.text)
        self.assertEqual(entry.value_of_css_property("color"), "rgba(200, 16, 46, 1)")
        entry.click()
        self.settle()
        self.assertEqual(self.state("cursor"), 5000)
        self.assertIn(HOSTILE_TEXT, self.text("event-text"))
        self.click("next-problem")
        self.assertEqual(self.state("cursor"), 9000)
        self.press("M")
        self.assertEqual(self.state("cursor"), 5000)
        self.assertIn("2 misuses", self.text("verdict"))

    def test_says_the_road_of_the_event_under_the_pointer(self):
        lines, _ = self.play("view.json")
        tick = next(line for line in lines if line["what"] == "wheel")
        self.press(Keys.HOME, ".")
        self.assertEqual(self.state("cursor"), tick["t"])
        stages = [item.get_attribute("value")
                  for item in self.browser.find_elements(By.CSS_SELECTOR, "#road li")]
        self.assertEqual(stages, ["4", "5", "6", "7", "8", "9", "10", "11"])
        self.assertIn("Zoom in with option held", self.text("road"))
        self.point(600, 150, "move")
        self.assertIn("sample", self.text("event-title"))

    def test_goes_to_the_time_that_is_clicked(self):
        self.play("flight.json")
        self.point(700, 150)
        first = self.state("cursor")
        self.assertGreater(first, 10000)
        self.point(800, 150)
        self.assertGreater(self.state("cursor"), first)
        self.assertEqual(self.text("now"), f"{self.state('cursor') / 1000:.3f} s")

    def test_zooms_and_moves_by_keys_wheel_and_drag(self):
        self.play("flight.json")
        whole = self.state("to")
        self.press("+")
        half = self.state("to") - self.state("from")
        self.assertAlmostEqual(half, whole / 2, delta=1)
        self.press("d")
        moved = self.state("from")
        self.assertGreater(moved, 0)
        chart = self.browser.find_element(By.ID, "chart")
        ActionChains(self.browser, duration=0).drag_and_drop_by_offset(chart, 100, 0).perform()
        self.settle()
        self.assertLess(self.state("from"), moved)
        self.assertAlmostEqual(self.state("to") - self.state("from"), half, delta=1)
        self.run_script("document.getElementById('chart').dispatchEvent(new WheelEvent('wheel',"
                        "{deltaY: -100, clientX: 500, clientY: 300, cancelable: true}))")
        self.assertLess(self.state("to") - self.state("from"), half)
        self.press("0")
        self.assertEqual([self.state("from"), self.state("to")], [0, whole])

    def test_zooms_and_moves_by_fingers(self):
        self.emulate(PHONE)
        self.play("flight.json")
        whole = self.state("to")
        self.touch("touchStart", (150, 200), (200, 200))
        self.touch("touchMove", (100, 200), (250, 200))
        self.touch("touchEnd")
        self.settle()
        span = self.state("to") - self.state("from")
        self.assertLess(span, whole / 2)
        before = self.state("from")
        self.touch("touchStart", (250, 200))
        self.touch("touchMove", (200, 200))
        self.touch("touchMove", (150, 200))
        self.touch("touchEnd")
        self.settle()
        self.assertGreater(self.state("from"), before)
        self.assertAlmostEqual(self.state("to") - self.state("from"), span, delta=1)
        self.touch("touchStart", (200, 200))
        self.touch("touchEnd")
        self.settle()
        self.assertGreater(self.state("cursor"), self.state("from"))

    def test_plays_pauses_scrubs_and_steps(self):
        lines, _ = self.play("flight.json")
        self.press(" ")
        self.assertTrue(self.state("isRunning"))
        self.assertEqual(self.text("run"), "Pause")
        self.press(" ")
        self.assertFalse(self.state("isRunning"))
        self.run_script("const s = document.getElementById('scrub'); s.value = 20000;"
                        "s.dispatchEvent(new Event('input'))")
        self.settle()
        self.assertAlmostEqual(self.state("cursor"), 20000, delta=1)
        view = [line for line in lines if line["what"] == "view" and line["t"] <= 20000][-1]
        self.assertIn(f"Zoom {view['zoom'] * 100:.4g} %", self.text("shown"))
        ticks = [line["t"] for line in lines if line["what"] == "wheel"]
        self.press(".")
        later = next(t for t in ticks if t > 20000)
        self.assertEqual(self.state("cursor"), later)
        self.press(",")
        self.assertEqual(self.state("cursor"), [t for t in ticks if t < later][-1])
        speed = self.state("speed")
        self.press("]")
        self.assertGreater(self.state("speed"), speed)

    def test_has_everything_in_a_table(self):
        lines, _ = self.play("zoom.json")
        self.press("t")
        rows = self.browser.find_elements(By.CSS_SELECTOR, "#rows tr")
        events = [number for number, line in enumerate(lines, 1) if not is_sample(line)]
        self.assertEqual([int(row.find_element(By.TAG_NAME, "td").text) for row in rows], events)
        self.run_script("const c = document.getElementById('rows-choice'); c.value = 'all';"
                        "c.dispatchEvent(new Event('change'))")
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, "#rows tr")), len(lines))
        self.press("t")
        self.assertFalse(self.browser.find_element(By.ID, "table").is_displayed())

    def test_lists_its_keys(self):
        self.play("zoom.json")
        self.press("?")
        self.assertTrue(self.browser.find_element(By.ID, "help").is_displayed())
        self.assertIn("next tick", self.text("key-list"))
        self.press(Keys.ESCAPE)
        self.assertFalse(self.browser.find_element(By.ID, "help").is_displayed())

    def test_fits_a_phone_and_follows_the_colour_scheme(self):
        self.emulate(PHONE)
        self.play("flight.json")
        width = self.run_script("return document.documentElement.scrollWidth")
        self.assertLessEqual(width, PHONE["width"])
        paper = "return getComputedStyle(document.body).backgroundColor"
        light = self.run_script(paper)
        self.emulate(PHONE, "dark")
        self.assertNotEqual(self.run_script(paper), light)

    def test_offers_each_of_several_plays(self):
        self.play("zoom.json", "clicks.json")
        self.run_script("const c = document.getElementById('play-choice'); c.value = '1';"
                        "c.dispatchEvent(new Event('change'))")
        self.settle()
        clicks = self.run_script("return report.countsOf(report.state.play).clicks")
        self.assertGreater(clicks, 0)
        self.assertTrue(self.browser.find_element(By.ID, "plays").is_displayed())

    def test_says_that_a_log_is_empty(self):
        self.show([])
        self.assertIn("empty", self.text("verdict"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
