"""Measures in the browser how long it takes from the change of a slider to the picture on the page.

    measure.py COMMAND PICTURE [CHANGES]
"""

import os
import statistics
import sys

from webdriver import Browser, Panel

# Measures from the slider's event to the browser's frame that paints the new picture.
SCRIPT = """
const slider = document.querySelector('[data-option="size"] input[type=range]');
const stage = document.getElementById('stage');
const times = [];
let left = arguments[0];
let start = 0;
const change = () => {
    slider.value = 4 + left * 7 % 120;
    start = performance.now();
    slider.dispatchEvent(new Event('input'));
};
new MutationObserver(() => requestAnimationFrame(() => {
    times.push(performance.now() - start);
    --left > 0 ? setTimeout(change, 5) : done(times);
})).observe(stage, {attributes: true, attributeFilter: ['data-shows']});
change();
"""


def main():
    command, picture = sys.argv[1:3]
    changes = int(sys.argv[3]) if len(sys.argv) > 3 else 300
    panel = Panel(command, [os.path.abspath(picture), "--renderer", "software"], ".")
    browser = Browser(1920, 1080)
    try:
        browser.open(panel.address)
        times = sorted(browser.run_async(SCRIPT, changes))
        with open(f"/proc/{panel.process.pid}/status", encoding="ascii") as status:
            memory = next(line for line in status if line.startswith("VmRSS")).split()[1]
        print(f"{len(times)} changes: median {statistics.median(times):.1f} ms, "
              f"95th percentile {times[int(len(times) * 0.95)]:.1f} ms, "
              f"{int(memory) / 1024:.0f} MiB resident in the end")
    finally:
        browser.close()
        panel.close()


main()
