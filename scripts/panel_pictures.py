"""Takes the pictures of Docs/panel.md.

    panel_pictures.py COMMAND SAMPLE FOLDER
"""

import os
import subprocess
import sys
import tempfile

from webdriver import Browser, Panel

COMMAND, SAMPLE, FOLDER = (os.path.abspath(word) for word in sys.argv[1:4])
STILL = "document.getElementById('stage').dataset.rests === 'true'"


def choose(browser, element, value):
    browser.run("const e = document.getElementById(arguments[0]); e.value = arguments[1];"
                "e.dispatchEvent(new Event('change'))", element, value)


def settle(browser):
    browser.run_async("setTimeout(done, 700)")
    browser.wait(STILL)


def take(browser, name, words, act):
    panel = Panel(COMMAND, [*words, "--renderer", "software"], os.getcwd())
    try:
        browser.open(panel.address)
        act()
        settle(browser)
        browser.screenshot(f"{FOLDER}/panel{name}.png")
    finally:
        panel.close()


def main():
    browser = Browser(1280, 720)
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        os.symlink(SAMPLE, "balloons.png")
        os.mkdir("renders")
        subprocess.run([COMMAND, "render", "balloons.png", "shot.mov", "--codec", "qtrle",
                        "--frames", "0-95", "--renderer", "software", "--size", "2"], check=True)
        look = ["balloons.png", "--size", "26", "--size-random", "60", "--size-level", "2"]
        try:
            take(browser, "", look, lambda: browser.hover("#stage", -60, 120))
            take(browser, "-split", [*look, "--shape-type", "triangle", "--dissolve", "20"],
                 lambda: (choose(browser, "compare", "split"), browser.run(
                     "document.getElementById('split').focus()")))

            def animate():
                browser.type("#frame", "40")
                browser.run("document.activeElement.blur()")
            take(browser, "-time", ["shot.mov", "--size", "18", "--transition-progress",
                                    "6:0:smooth 54:62:ease-out 88:100", "--feather", "120"], animate)
            take(browser, "-output", [*look, "--output-folder", "renders"],
                 lambda: browser.click("#open-output"))
        finally:
            browser.close()


main()
