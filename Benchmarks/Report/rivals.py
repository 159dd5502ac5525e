#!/usr/bin/env python3
"""Times the alternatives to the effect on one picture and writes JSON.

The tools run in turns, so that other load on the machine affects all of them alike.
"""

import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
SHADERS = ROOT / "Plugins/Tesselune/Sources/Shaders"
CELL = 10  # side of a cell in pixels
SIZE = (1920, 1080)
FRAMES = 21  # in runs that measure the cost of a further frame

# The effect's fragment shader for squares, in the order in which the effect joins its pieces.
PIECES = [
    "Prelude", "FeatherTransitions", "DissolveHead",
    "    dissolveTransitionLinear(sample);\n}\n",
    "MosaicColor", "SquareCells", "MainHead", "MainSquare", "MainTail",
]  # fmt: skip

# GStreamer's command line sets scalar uniforms only, so the vectors become constants.
SCALARS = {
    "multiplier16bit": 1.0,
    "sizeLevel": 3.0,
    "sizeRandomLimit": 0.0,
    "sizeRandomSeed": 0.0,
    "fadePercent": 0.0,
    "dissolveRandomSeed": 0.0,
    "dissolveFeather": 250.0,
    "dissolveTransitionPercent": 0.0,
    "linearTransitionAngle": 0.0,
    "maxSideLength": 1101.5,
    "useAlpha": 1.0,
}
VECTORS = {
    "vec2 texSize": f"vec2({SIZE[0]}.0, {SIZE[1]}.0)",
    "vec2 maxBlockSize": f"vec2({8 * CELL}.0)",
    "vec2 normalBlockSize": f"vec2({CELL}.0)",
    "vec2 linearTransitionStartPoint": "vec2(0.0)",
    "vec4 linearTransitionCorner": f"vec4(0.0, 0.0, {SIZE[0]}.0, {SIZE[1]}.0)",
}

GSTREAMER_VERTEX = (
    "#version 330\nin vec4 a_position; in vec2 a_texcoord; out vec2 uv;"
    " void main() { uv = a_texcoord; gl_Position = a_position; }"
)


def replaced(text, old, new):
    if old not in text:
        raise SystemExit(f"rivals.py: the effect's program no longer has '{old}'")
    return text.replace(old, new)


def gstreamer_fragment():
    pieces = (SHADERS / f"{piece}.glsl" for piece in PIECES)
    text = "".join(
        path.read_text() if path.exists() else piece for path, piece in zip(pieces, PIECES)
    )
    for declaration, value in VECTORS.items():
        text = replaced(text, f"uniform {declaration};", f"const {declaration} = {value};")
    text = replaced(text, "uniform sampler2D videoTexture;", "uniform sampler2D tex;")
    text = text.replace("texture(videoTexture,", "texture(tex,")
    # GStreamer's textures hold RGBA.
    return replaced(text, "vec4(eColor.g, eColor.b, eColor.a, eColor.r)", "eColor")


def ffmpeg(source, chain, frames, sink):
    repeat = [f"loop={frames - 1}:1"] if frames > 1 else []
    filters = ",".join(["format=rgba", *repeat, *chain, "null"])
    return ["ffmpeg", "-v", "error", "-y", "-i", source, "-vf", filters, *sink]


def gstreamer(source, frames, is_filtered, sink):
    def quoted(text):
        return '"' + text.replace('"', '\\"') + '"'

    scalars = ",".join(["uniforms", *(f"{name}=(float){value}" for name, value in SCALARS.items())])
    shader = ["!", "glshader", f"vertex={quoted(GSTREAMER_VERTEX)}",
              f"fragment={quoted(gstreamer_fragment())}", f"uniforms={quoted(scalars)}"]  # fmt: skip
    return [
        "gst-launch-1.0", "-q", "filesrc", f"location={source}", "!", "pngdec", "!",
        "imagefreeze", f"num-buffers={frames}", "!", "videoconvert", "!",
        "video/x-raw,format=RGBA", "!", "glupload", *(shader if is_filtered else []), "!",
        "gldownload", "!", "video/x-raw,format=RGBA", "!", *sink,
    ]  # fmt: skip


def commands(tesselune, source, folder):
    """Returns the command lines of each tool's runs: file to file, and with or without the filter.

    The cost of a further frame is (long - short) - (bare long - bare short), divided by the number
    of frames that the long run has more than the short one. GEGL handles one picture a run: its
    filter's cost is the run with the filter less the run without it.
    """
    null = ["-f", "null", "-"]
    pixelize = [f"pixelize=w={CELL}:h={CELL}"]
    pixeliz0r = [f"frei0r=pixeliz0r:{CELL / SIZE[0]}|{CELL / SIZE[1]}"]

    def filter_runs(chain, name):
        return {
            "file": ffmpeg(source, chain, 1, [f"{folder}/{name}.png"]),
            "long": ffmpeg(source, chain, FRAMES, null),
            "short": ffmpeg(source, chain, 1, null),
            "bare long": ffmpeg(source, [], FRAMES, null),
            "bare short": ffmpeg(source, [], 1, null),
        }

    png_sink = ["pngenc", "!", "filesink", f"location={folder}/gstreamer.png"]
    mosaic = ["gegl:mosaic", "tile-type=squares", f"tile-size={CELL}"]
    return {
        "tesselune": {
            "file": [tesselune, "render", source, f"{folder}/effect.png", "--size", str(CELL)]
        },
        "ffmpeg pixelize": filter_runs(pixelize, "pixelize"),
        "frei0r pixeliz0r": filter_runs(pixeliz0r, "pixeliz0r"),
        "GEGL gegl:mosaic": {
            "file": ["gegl", source, "-o", f"{folder}/gegl.png", "--", *mosaic],
            "bare file": ["gegl", source, "-o", f"{folder}/nop.png", "--", "gegl:nop"],
        },
        "GStreamer glshader": {
            "file": gstreamer(source, 1, True, png_sink),
            "long": gstreamer(source, FRAMES, True, ["fakesink"]),
            "short": gstreamer(source, 1, True, ["fakesink"]),
            "bare long": gstreamer(source, FRAMES, False, ["fakesink"]),
            "bare short": gstreamer(source, 1, False, ["fakesink"]),
        },
    }


def timed(command):
    """Returns a command's wall and processor time in milliseconds."""
    # Runs GStreamer without a display, on the EGL device platform, which the effect uses too.
    environment = dict(os.environ, GST_GL_PLATFORM="egl", GST_GL_WINDOW="egl-device")
    with tempfile.TemporaryFile() as log:
        start = time.monotonic()
        process = subprocess.Popen(command, stdout=log, stderr=log, env=environment)
        _, status, usage = os.wait4(process.pid, 0)
        wall = time.monotonic() - start
        process.returncode = os.waitstatus_to_exitcode(status)
        log.seek(0)
        output = log.read().decode(errors="replace")
        # gst-launch exits with 0 after some errors.
        if process.returncode != 0 or "ERROR" in output:
            raise RuntimeError(f"{command[0]} failed: {output.strip()[-300:]}")
    return wall * 1e3, (usage.ru_utime + usage.ru_stime) * 1e3


def frame_cost(runs):
    """Returns the milliseconds per frame of the filter alone; None if it cannot be computed."""
    if "bare file" in runs:
        return runs["file"] - runs["bare file"]
    if "long" in runs:
        filtered = runs["long"] - runs["short"]
        return (filtered - (runs["bare long"] - runs["bare short"])) / (FRAMES - 1)
    return None


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("tesselune", help="the command")
    parser.add_argument("picture", help=f"a PNG of {SIZE[0]} by {SIZE[1]} pixels")
    parser.add_argument("report", help="JSON file to write")
    parser.add_argument("--rounds", type=int, default=5)
    arguments = parser.parse_args()

    with tempfile.TemporaryDirectory() as folder:
        tools = commands(arguments.tesselune, arguments.picture, folder)
        samples, failures = {}, {}
        for round_number in range(arguments.rounds):
            print(f"round {round_number + 1} of {arguments.rounds}", file=sys.stderr)
            for tool, runs in tools.items():
                if tool in failures:
                    continue
                try:
                    for run, command in runs.items():
                        samples.setdefault((tool, run), []).append(timed(command))
                except (RuntimeError, FileNotFoundError) as error:
                    failures[tool] = str(error)
                    print(error, file=sys.stderr)

    report = {}
    for tool, runs in tools.items():
        if tool in failures:
            report[tool] = {"failure": failures[tool]}
            continue
        report[tool] = {}
        for index, clock in enumerate(("wall_ms", "cpu_ms")):
            medians = {
                run: statistics.median(sample[index] for sample in samples[tool, run])
                for run in runs
            }
            report[tool][clock] = {"file": medians["file"], "frame": frame_cost(medians)}
    pathlib.Path(arguments.report).write_text(json.dumps(report, indent=1) + "\n")


if __name__ == "__main__":
    main()
