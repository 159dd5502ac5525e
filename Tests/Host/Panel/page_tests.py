"""The panel as an artist has it, in a browser: what the page shows is what the command makes.

    page_tests.py COMMAND SAMPLE [TEST...]
"""

import json
import os
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest

from webdriver import Browser, Panel

COMMAND = os.path.abspath(sys.argv.pop(1))
SAMPLE = os.path.abspath(sys.argv.pop(1))


def run(*words, folder):
    return subprocess.run([COMMAND, *words], cwd=folder, check=True, capture_output=True)


class PageTest(unittest.TestCase):
    """A browser for all tests, and a folder with a picture, a sequence and a movie."""

    @classmethod
    def setUpClass(cls):
        cls.browser = Browser()
        cls.folder = tempfile.mkdtemp(prefix="tesselune-page-")
        shutil.copy(SAMPLE, cls.folder + "/photo.png")
        run("render", "photo.png", "deep.tif", "--bits", "16", "--size", "2", folder=cls.folder)
        run("render", "photo.png", "shot.#.png", "--frames", "11-30", "--renderer", "software",
            "--size", "11:3 30:60", folder=cls.folder)
        run("render", "shot.#.png", "clip.mkv", "--codec", "ffv1", "--fps", "25", folder=cls.folder)

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        shutil.rmtree(cls.folder)

    def open(self, *words):
        self.panel = Panel(COMMAND, [*words, "--renderer", "software"], self.folder)
        self.addCleanup(lambda: self.assertEqual(self.panel.close(), 0))
        self.addCleanup(self.leave)
        self.browser.open(self.panel.address)

    def leave(self):
        """Leaves the page before its panel ends, as it would go on asking for pictures."""
        complaints = self.browser.complaints()
        self.browser.leave()
        self.assertEqual(complaints, [])

    def state(self):
        return json.loads(self.panel.get("state"))

    def parameter(self, option):
        return self.state()["parameters"][option]

    def frame(self):
        return int(self.browser.run("return document.getElementById('stage').dataset.frame"))

    def rest(self):
        """Waits until the page shows what the server has."""
        revision = self.state()["revision"]
        self.browser.wait("document.body.dataset.revision === '%d' && "
                          "document.getElementById('stage').dataset.rests === 'true'" % revision)

    def changed(self, action):
        """Does something that changes the look, and waits for its picture."""
        before = self.state()["revision"]
        action()
        for _ in range(1000):
            if self.state()["revision"] != before:
                break
        self.rest()

    def line(self, name="still"):
        frame = json.loads(self.panel.get(f"frame?frame={self.frame()}"))
        return frame["lines"][name]

    def assertShowsWhatTheLineRenders(self):
        words = shlex.split(self.line())
        self.assertEqual(words[0], "tesselune")
        run(*words[1:], folder=self.folder)
        with open(self.folder + "/still.png", "rb") as file:
            rendered = file.read()
        self.assertEqual(self.panel.get(f"still?frame={self.frame()}"), rendered, self.line())

    def pixels(self):
        """All that the canvas shows."""
        return self.browser.run("return document.getElementById('canvas').toDataURL()")


class Controls(PageTest):
    def test_each_kind_sets_what_the_command_is_told(self):
        self.open("photo.png")
        browser = self.browser
        row = "[data-option='{}'] ".format
        self.changed(lambda: browser.drag(row("size") + "input[type=range]", (0.05, 0.5), (0.2, 0.5)))
        self.assertNotEqual(self.parameter("size")["value"], 10)
        self.assertShowsWhatTheLineRenders()
        self.changed(lambda: browser.type(row("size") + "input[type=number]", "700"))
        self.assertEqual(self.parameter("size")["value"], 700)  # beyond the slider
        self.changed(lambda: browser.type(row("size") + "input[type=number]", "24"))
        self.changed(lambda: browser.run("""
            const choice = document.querySelector(arguments[0]);
            choice.value = 2;
            choice.dispatchEvent(new Event('change'));""", row("shape-type") + "select"))
        self.changed(lambda: browser.type(row("dissolve") + "input[type=number]", "30"))
        self.changed(lambda: browser.click(row("dissolve-random-seed") + ".dice"))
        self.changed(lambda: browser.type(row("transition-progress") + "input[type=number]", "40.5"))
        self.changed(lambda: browser.drag(row("direction") + ".dial", (0.9, 0.5), (0.5, 0.95)))
        self.assertAlmostEqual(self.parameter("direction")["value"], 90, delta=3)
        self.assertShowsWhatTheLineRenders()
        self.changed(lambda: browser.click(row("use-alpha") + ".switch"))
        self.assertIn("--use-alpha false", self.line())
        self.assertShowsWhatTheLineRenders()
        self.changed(lambda: browser.click(row("size") + ".reset"))
        self.assertTrue(self.parameter("size")["isDefault"])
        self.changed(lambda: browser.click("#reset-all"))
        self.assertTrue(all(p["isDefault"] for p in self.state()["parameters"].values()))

    def test_a_value_out_of_range_is_kept_within_it(self):
        self.open("photo.png")
        self.changed(lambda: self.browser.type("[data-option=ratio] input[type=number]", "99"))
        self.assertEqual(self.parameter("ratio")["value"], 10)

    def test_undo_goes_all_the_way_and_a_reload_finds_the_work(self):
        self.open("photo.png", "--size", "20")
        for value in ("30", "40", "50"):
            self.changed(lambda: self.browser.run(
                "import('./page/Store.js').then(({store}) => store.edit("
                "{do: 'set', option: 'size', value: arguments[0]}))".replace(
                    "arguments[0]", f"'{value}'")))
        self.changed(lambda: self.browser.press("Control", "z"))
        self.assertEqual(self.parameter("size")["value"], 40)
        self.changed(lambda: self.browser.click("#undo"))
        self.changed(lambda: self.browser.click("#undo"))
        self.assertEqual(self.parameter("size")["value"], 20)
        self.changed(lambda: self.browser.press("Control", "y"))
        self.browser.open(self.panel.address)
        self.assertEqual(self.browser.run(
            "return document.querySelector('[data-option=size] input[type=number]').value"), "30")
        self.changed(lambda: self.browser.click("#redo"))
        self.assertShowsWhatTheLineRenders()

    def test_keys_on_the_keyboard_alone(self):
        self.open("photo.png")
        self.browser.run("document.querySelector('[data-option=size] input[type=range]').focus()")
        self.changed(lambda: self.browser.press("Right"))
        self.assertEqual(self.parameter("size")["value"], 11)
        self.browser.press("?")
        self.browser.wait("document.getElementById('help').open")
        self.browser.press("Escape")
        self.browser.press("o")
        self.browser.wait("document.getElementById('line-still').textContent.length > 0")
        self.browser.press("Escape")
        unlabelled = self.browser.run("""
            return [...document.querySelectorAll('button, input, select, [role=slider]')].filter(
                (e) => !e.hidden && !e.textContent.trim() && !e.getAttribute('aria-label') &&
                       !e.labels?.length).map((e) => e.id || e.outerHTML)""")
        self.assertEqual(unlabelled, [])


class View(PageTest):
    def test_split_before_and_grounds_change_what_is_seen(self):
        self.open("photo.png", "--dissolve", "50", "--size", "40")
        seen = [self.pixels()]
        for key in ("s", "s"):
            self.browser.press(key)
            self.browser.run_async("setTimeout(done, 400)")
            seen.append(self.pixels())
        self.assertNotEqual(seen[0], seen[1])
        self.assertEqual(seen[0], seen[2])
        grounds = {seen[0]}
        for _ in range(2):
            self.browser.press("g")
            grounds.add(self.pixels())
        self.assertEqual(len(grounds), 3)
        self.browser.press("1")
        self.assertEqual(self.browser.run("return document.getElementById('zoom').textContent"),
                         "100 %")
        self.browser.press("f")

    def test_the_cell_under_the_pointer_has_the_colour_of_the_picture(self):
        self.open("photo.png", "--size", "40")
        self.browser.hover("#stage", 0, 0)
        self.browser.wait("document.getElementById('cell').textContent.includes('#')")
        text = self.browser.run("return document.getElementById('cell').textContent")
        x, y = (int(number) for number in text.split("#")[0].split(","))
        cell = json.loads(self.panel.get(f"cell?frame=0&x={x}&y={y}"))
        self.assertIn("#%02x%02x%02x" % tuple(cell["color"][:3]), text)
        self.assertEqual({end - begin for _, begin, end in cell["runs"]}, {40})
        self.assertEqual(len(cell["runs"]), 40)

    def test_two_looks_are_compared_and_swapped(self):
        self.open("photo.png", "--size", "40")
        self.changed(lambda: self.browser.click("#keep"))
        self.changed(lambda: self.browser.type("[data-option=size] input[type=number]", "9"))
        self.browser.run("const c = document.getElementById('compare'); c.value = 'sides';"
                         "c.dispatchEvent(new Event('change'))")
        self.changed(lambda: self.browser.press("x"))
        self.assertEqual(self.parameter("size")["value"], 40)
        self.assertShowsWhatTheLineRenders()


class Time(PageTest):
    def test_keys_are_set_moved_copied_and_removed(self):
        self.open("shot.#.png", "--fps", "25")
        browser = self.browser
        key = "[data-option=size] .key"
        number = "[data-option=size] input[type=number]"
        browser.run("document.activeElement.blur()")
        self.changed(lambda: browser.click(key))
        browser.press("End")
        browser.wait("document.getElementById('stage').dataset.frame === '30'")
        self.changed(lambda: browser.type(number, "48"))
        self.assertIn("--size '11:10 30:48'", self.line())
        self.assertShowsWhatTheLineRenders()
        browser.run("document.activeElement.blur()")
        for _ in range(9):
            browser.press("Left")
        browser.wait("document.getElementById('stage').dataset.frame === '21' &&"
                     "document.getElementById('stage').dataset.rests === 'true'")
        self.assertShowsWhatTheLineRenders()
        self.assertAlmostEqual(float(browser.run(f"return document.querySelector('{number}').value")),
                               30, delta=0.01)
        browser.run("document.querySelectorAll('.key-mark')[1].focus()")
        self.changed(lambda: browser.press("Left"))
        self.assertIn("--size '11:10 29:48'", self.line())
        browser.run("document.querySelectorAll('.key-mark')[0].focus()")
        browser.press("c")
        browser.type("#frame", "20")
        browser.wait("document.getElementById('stage').dataset.frame === '20'")
        self.changed(lambda: browser.click("#paste-key"))
        self.assertIn("--size '11:10 20:10 29:48'", self.line())
        self.changed(lambda: browser.run(
            "const w = document.getElementById('way'); w.value = 'smooth';"
            "w.dispatchEvent(new Event('change'))"))
        self.assertIn("20:10:smooth", self.line())
        browser.run("document.querySelectorAll('.key-mark')[0].focus()")
        self.changed(lambda: browser.press("Delete"))
        self.changed(lambda: browser.drag("#curve .key-mark:last-of-type", (0.5, 0.5), (-20, 0.5)))
        keys = self.parameter("size")["keys"]
        self.assertEqual(len(keys), 2)
        self.assertLess(keys[1]["frame"], 29)
        self.changed(lambda: browser.click("#remove-keys"))
        self.assertFalse(self.parameter("size")["animated"])

    def test_space_plays(self):
        self.open("clip.mkv")
        self.browser.run("document.activeElement.blur()")
        self.browser.press(" ")
        self.browser.wait("Number(document.getElementById('stage').dataset.shows) > 10")
        self.browser.press(" ")
        self.rest()
        self.assertRegex(self.browser.run("return document.getElementById('dropped').textContent"),
                         r"^\d+ dropped$")
        self.assertShowsWhatTheLineRenders()


class Inputs(PageTest):
    def test_any_frame_of_a_movie_is_the_command_s(self):
        self.open("clip.mkv", "--size", "0s:4 0.8s:50")
        for frame in (0, 7, 19, 3):
            self.browser.type("#frame", str(frame))
            self.browser.wait(f"document.getElementById('stage').dataset.frame === '{frame}' &&"
                              "document.getElementById('stage').dataset.rests === 'true'")
            self.assertShowsWhatTheLineRenders()

    def test_deep_pictures_are_shown_with_8_bits(self):
        self.open("deep.tif", "--size", "30")
        self.assertIn("--depth 8", self.line())
        self.assertShowsWhatTheLineRenders()

    def test_linear_pictures_are_converted(self):
        self.open("deep.tif", "--convert", "linear", "sRGB", "--size", "30")
        self.assertIn("--convert linear sRGB --bits 8", self.line())
        self.assertShowsWhatTheLineRenders()

    def test_another_picture_is_tried_in_memory(self):
        self.open("shot.#.png")
        self.changed(lambda: self.browser.file("#picture-file", self.folder + "/photo.png"))
        self.assertEqual(self.state()["footage"]["name"], "photo.png")
        self.assertShowsWhatTheLineRenders()
        with open(self.folder + "/none.png", "w", encoding="ascii") as file:
            file.write("none")
        self.browser.file("#picture-file", self.folder + "/none.png")
        self.browser.wait("document.getElementById('message').classList.contains('problem')")
        self.assertEqual(self.state()["footage"]["name"], "photo.png")
        self.browser.complaints()  # the refusal is one
        self.changed(lambda: self.browser.click("#back"))
        self.assertEqual(self.state()["footage"]["kind"], "sequence")


class OtherPrograms(PageTest):
    def test_lines_for_other_programs_make_this_picture(self):
        self.open("photo.png", "--size", "24", "--shape-type", "triangle", "--direction=-90",
                  "--transition-progress", "30", "--feather", "1", "--use-alpha", "false")
        with open(self.folder + "/page.png", "wb") as file:
            file.write(self.panel.get("still?frame=0"))
        for program in ("ffmpeg", "gstreamer", "melt"):
            self.assertMakes(program, "cells.1.png" if program == "melt" else "cells.png")

    def test_lines_for_other_programs_make_shots(self):
        self.open("shot.#.png", "--size", "11:10:smooth 30:60")
        self.browser.press("End")
        self.browser.wait("document.getElementById('stage').dataset.frame === '30'")
        self.rest()
        with open(self.folder + "/page.png", "wb") as file:
            file.write(self.panel.get("still?frame=30"))
        for program, made in (("ffmpeg", "cells.0020.png"), ("gstreamer", "cells.0019.png"),
                              ("melt", "cells.20.png")):
            self.assertMakes(program, made)

    def assertMakes(self, program, made):
        """Asserts that the line for `program` makes page.png again, as the file `made`."""
        modules = os.path.join(os.path.dirname(COMMAND), "../lib/frei0r-1")
        environment = {**os.environ, "FREI0R_PATH": modules, "TESSELUNE_RENDERER": "software"}

        def pixels(file):
            return subprocess.run(
                ["ffmpeg", "-v", "error", "-i", file, "-f", "rawvideo", "-pix_fmt", "rgba", "-"],
                cwd=self.folder, check=True, capture_output=True).stdout

        if os.path.exists(f"{self.folder}/{made}"):
            os.remove(f"{self.folder}/{made}")
        result = subprocess.run(self.line(program).replace("ffmpeg -", "ffmpeg -y -"), shell=True,
                                cwd=self.folder, env=environment, check=True, capture_output=True,
                                stdin=subprocess.DEVNULL)
        self.assertTrue(os.path.exists(f"{self.folder}/{made}"), result)
        one, other = pixels(made), pixels("page.png")
        self.assertEqual(len(one), len(other), program)
        different = sum(abs(a - b) > 3 for a, b in zip(one, other))
        self.assertLess(different / len(other), 0.01, program)


class Output(PageTest):
    def test_presets_are_loaded_and_saved(self):
        os.mkdir(self.folder + "/presets")
        self.open("photo.png", "--output-folder", "presets")
        self.changed(lambda: self.browser.click(".preset[title*='triangle'], .preset"))
        self.assertShowsWhatTheLineRenders()
        self.changed(lambda: self.browser.click("#surprise"))
        self.assertShowsWhatTheLineRenders()
        self.browser.click("#open-output")
        self.browser.run("document.getElementById('save-name').value = 'mine'")
        self.changed(lambda: self.browser.click("#save-preset"))
        self.assertIn("mine", [preset["name"] for preset in self.state()["presets"]])
        line = self.line()
        run("render", "photo.png", "saved.png", "--preset", "presets/mine.json", folder=self.folder)
        with open(self.folder + "/saved.png", "rb") as file:
            self.assertEqual(file.read(), self.panel.get("still?frame=0"), line)

    def test_a_rendering_is_the_command_s(self):
        os.mkdir(self.folder + "/renders")
        self.open("shot.#.png", "--size", "11:4 30:60", "--output-folder", "renders")
        self.browser.click("#open-output")
        self.browser.click("#render")
        self.browser.wait(
            "document.getElementById('progress-text').textContent.includes('frames, done')")
        run("render", "shot.#.png", "own.#.png", "--size", "11:4 30:60", "--renderer", "software",
            folder=self.folder)
        for frame in (11, 20, 30):
            with open(f"{self.folder}/renders/cells.{frame:04}.png", "rb") as one, \
                    open(f"{self.folder}/own.{frame:04}.png", "rb") as other:
                self.assertEqual(one.read(), other.read())

    def test_a_rendering_is_stopped(self):
        os.mkdir(self.folder + "/many")
        self.open("photo.png", "--frames", "0-3000", "--output-folder", "many")
        self.browser.click("#open-output")
        self.browser.click("#render")
        self.browser.wait("document.getElementById('progress-bar').value > 0")
        self.browser.click("#stop")
        self.browser.wait(
            "document.getElementById('progress-text').textContent.includes('frames, stopped')")
        rendered = os.listdir(self.folder + "/many")
        self.assertLess(len(rendered), 3000)
        self.assertFalse([name for name in rendered if "partial" in name])


if __name__ == "__main__":
    unittest.main()
