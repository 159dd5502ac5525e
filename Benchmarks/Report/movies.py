#!/usr/bin/env python3
"""Times movies, H.264 to H.264, through tesselune and ffmpeg's pixelize in turns; writes JSON."""

import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

CELL = 10  # side of a cell in pixels
FRAMES = 900
QUALITY = {"tesselune": "66", "ffmpeg": "18"}  # the same: tesselune's 66 means crf 18
PICTURES = f"mandelbrot=size=1920x1080:rate=25,trim=end_frame={FRAMES}"


def ffmpeg(*arguments):
    return ["ffmpeg", "-v", "error", "-nostdin", "-y", *arguments]


def timed(command):
    """Returns a frame's wall and processor time in milliseconds, including the program's start."""
    before, begin = os.times(), time.monotonic()
    subprocess.run(command, check=True, capture_output=True)
    wall, after = time.monotonic() - begin, os.times()
    used = (after.children_user - before.children_user
            + after.children_system - before.children_system)  # fmt: skip
    return wall * 1e3 / FRAMES, used * 1e3 / FRAMES


def commands(tesselune, folder):
    clip = f"{folder}/clip.mp4"
    subprocess.run(ffmpeg("-f", "lavfi", "-i", PICTURES, "-c:v", "libx264", "-preset", "veryfast",
                          "-pix_fmt", "yuv420p", clip), check=True)  # fmt: skip
    return {
        "tesselune": [tesselune, "render", clip, f"{folder}/tesselune.mp4", "--quiet",
                      "--renderer", "software", "--size", str(CELL),
                      "--quality", QUALITY["tesselune"], "--codec-options", "preset=ultrafast"],
        "ffmpeg pixelize": ffmpeg("-i", clip, "-vf", f"pixelize=w={CELL}:h={CELL}",
                                  "-c:v", "libx264", "-preset", "ultrafast",
                                  "-crf", QUALITY["ffmpeg"], f"{folder}/pixelize.mp4"),
    }  # fmt: skip


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("tesselune", help="the command")
    parser.add_argument("report", help="JSON file to write")
    parser.add_argument("--rounds", type=int, default=7)
    arguments = parser.parse_args()

    with tempfile.TemporaryDirectory() as folder:
        programs = commands(arguments.tesselune, folder)
        samples = {name: [] for name in programs}
        for round_number in range(arguments.rounds):
            print(f"round {round_number + 1} of {arguments.rounds}", file=sys.stderr)
            for name, command in programs.items():
                samples[name].append(timed(command))
    report = {}
    for name, times in samples.items():
        report[name] = {}
        for clock, label in enumerate(("wall_ms", "cpu_ms")):
            quotients = [own[clock] / other[clock]
                         for own, other in zip(samples["tesselune"], times)]  # fmt: skip
            report[name][label] = {
                "frame": statistics.median(sample[clock] for sample in times),
                "ratio": statistics.median(quotients),
            }
    pathlib.Path(arguments.report).write_text(json.dumps(report, indent=1) + "\n")


if __name__ == "__main__":
    main()
