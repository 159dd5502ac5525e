#!/usr/bin/env python3
"""Times ffmpeg filters on raw RGBA video in turns, with ffmpeg's own clocks, and writes JSON."""

import argparse
import json
import os
import pathlib
import re
import statistics
import subprocess
import sys

CELL = 10  # side of a cell in pixels
SIZE = (1920, 1080)
FRAMES = 200

FILTERS = {
    "none": "null",
    "tesselune": f"frei0r=tesselune:0|{(CELL - 2) / 498}",
    "pixelize": f"pixelize=w={CELL}:h={CELL}",
    "pixeliz0r": f"frei0r=pixeliz0r:{CELL / SIZE[0]}|{CELL / SIZE[1]}",
}


def timed(picture, chain, frei0r):
    """Returns a frame's wall and processor time in milliseconds, including its reading."""
    command = ["ffmpeg", "-hide_banner", "-nostdin", "-f", "rawvideo", "-pix_fmt", "rgba",
               "-s", f"{SIZE[0]}x{SIZE[1]}", "-stream_loop", str(FRAMES - 1), "-i", picture,
               "-vf", chain, "-benchmark", "-f", "null", "-"]  # fmt: skip
    environment = dict(os.environ, TESSELUNE_RENDERER="software", FREI0R_PATH=frei0r)
    run = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
    times = re.search(r"bench: utime=([\d.]+)s stime=([\d.]+)s rtime=([\d.]+)s", run.stderr)
    if run.returncode != 0 or times is None:
        raise SystemExit(f"filters.py: {chain} failed: {run.stderr.strip()[-300:]}")
    user, system, wall = map(float, times.groups())
    return wall * 1e3 / FRAMES, (user + system) * 1e3 / FRAMES


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("frei0r", help="folder of the filter tesselune")
    parser.add_argument("picture", help=f"raw RGBA of {SIZE[0]} by {SIZE[1]} pixels")
    parser.add_argument("report", help="JSON file to write")
    parser.add_argument("--rounds", type=int, default=7)
    arguments = parser.parse_args()

    folders = f"{arguments.frei0r}:/usr/lib/frei0r-1"
    samples = {name: [] for name in FILTERS}
    for round_number in range(arguments.rounds):
        print(f"round {round_number + 1} of {arguments.rounds}", file=sys.stderr)
        bare = timed(arguments.picture, FILTERS["none"], folders)
        for name, chain in FILTERS.items():
            whole = timed(arguments.picture, chain, folders)
            samples[name].append([time - rest for time, rest in zip(whole, bare)])
    report = {}
    for name in FILTERS:
        if name == "none":
            continue
        report[name] = {}
        for clock, label in enumerate(("wall_ms", "cpu_ms")):
            quotients = [own[clock] / other[clock]
                         for own, other in zip(samples["tesselune"], samples[name])]  # fmt: skip
            report[name][label] = {
                "frame": statistics.median(sample[clock] for sample in samples[name]),
                "ratio": statistics.median(quotients),
            }
    pathlib.Path(arguments.report).write_text(json.dumps(report, indent=1) + "\n")


if __name__ == "__main__":
    main()
