#!/usr/bin/env python3
"""Draws the plots of Docs/performance.md and refreshes the figures between its markers."""

import argparse
import datetime
import json
import os
import pathlib
import re
import subprocess

import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt  # noqa: E402: the backend comes first

BEGIN, END = "<!-- figures: begin -->", "<!-- figures: end -->"
PICTURES = "pictures/performance"
COLOURS = {"effect": "#b5543f", "bare": "#7a8b99", "memcpy": "#c9b458", "rival": "#5d7f8f"}
FULL_HD = 1920 * 1080
MOVIE_GOAL = 0.95  # at most, as a share of the wall time of ffmpeg with its pixelize
STAGES = ["begin drawing", "upload", "draw", "resolve", "screen pass", "read-back"]  # first to last
PARAMETERS = ["Size 2", "Size 10", "Size 50", "Size 500", "5 levels"]


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def machine():
    """Returns what the figures were measured on, as a list of (name, value)."""
    cpu = dict(re.findall(r"^([^:\n]+):\s*(.+)$", output_of("lscpu"), re.MULTILINE))
    memory = re.search(r"MemTotal:\s+(\d+)", pathlib.Path("/proc/meminfo").read_text())[1]
    system = re.search(r'PRETTY_NAME="(.*)"', pathlib.Path("/etc/os-release").read_text())[1]
    mesa = output_of("dpkg-query", "-W", "-f=${Version}", "libgl1-mesa-dri")
    return [
        ("Processor", f"{cpu['Model name']}, {cpu['CPU(s)']} threads seen"),
        ("Caches", f"L2 {cpu.get('L2 cache', 'unknown')}, L3 {cpu.get('L3 cache', 'unknown')}"),
        ("Memory", f"{int(memory) / 2**20:.0f} GiB"),
        ("System", f"{system}, Linux {output_of('uname', '-r').strip()}"),
        ("OpenGL", f"Mesa {mesa}"),
        ("Commit", output_of("git", "rev-parse", "--short", "HEAD").strip()
         + (" with changes" if output_of("git", "status", "--porcelain", "-uno") else "")),
        ("Day", datetime.date.today().isoformat()),
    ]  # fmt: skip


def table(header, rows):
    lines = [header, ["---"] + ["---:"] * (len(header) - 1), *rows]
    return "\n".join("| " + " | ".join(map(str, line)) + " |" for line in lines) + "\n"


def number(value):
    return f"{value:.3g}" if value < 100 else f"{value:.0f}"


def ratio(estimate):
    return f"{estimate['median']:.2f} ({estimate['low']:.2f} to {estimate['high']:.2f})"


def side(row, name, value="median", clock="cpu_ms"):
    return row["sides"][name][clock][value]


def size_of(row):
    return f"{row['width']} x {row['height']}"


def pixels(row):
    return row["width"] * row["height"]


def stage_times(benchmarks):
    """Returns the median processor and wall time in milliseconds by name, without its arguments."""
    factor = {"ns": 1e-6, "us": 1e-3, "ms": 1.0}
    times = {}
    for entry in benchmarks["benchmarks"]:
        if entry.get("aggregate_name") == "median":
            name = re.sub(r"(/\d+)*(/process_time)?(/real_time)?$", "", entry["run_name"])
            scale = factor[entry["time_unit"]]
            times[name] = (entry["cpu_time"] * scale, entry["real_time"] * scale)
    return times


def save(figure, folder, name):
    figure.tight_layout()
    figure.savefig(folder / f"{name}.svg", metadata={"Date": None})
    plt.close(figure)


def plot_sizes(plain, folder):
    figure, (left, right) = plt.subplots(1, 2, figsize=(9, 3.4))
    for bits, marker in ((8, "o"), (16, "s"), (32, "^")):
        rows = [row for row in plain if row["bits"] == bits]
        megapixels = [pixels(row) / 1e6 for row in rows]
        for name in ("effect", "bare"):
            left.plot(megapixels, [side(row, name) * 1e6 / pixels(row) for row in rows],
                      marker=marker, color=COLOURS[name], label=f"{name}, {bits} bits",
                      linestyle="-" if name == "effect" else ":")  # fmt: skip
        ratios = [row["sides"]["bare"]["cpu_ratio"] for row in rows]
        medians = [each["median"] for each in ratios]
        errors = [
            [each["median"] - each["low"] for each in ratios],
            [each["high"] - each["median"] for each in ratios],
        ]
        right.errorbar(megapixels, medians, errors, marker=marker, capsize=3, label=f"{bits} bits")
    left.set(xscale="log", ylim=(0, None), xlabel="megapixels", ylabel="ns a pixel")
    left.legend(fontsize=7)
    right.axhline(1.02, color="black", linewidth=0.7)
    right.set(xscale="log", xlabel="megapixels", ylabel="render command over bare GL calls")
    right.legend(fontsize=7)
    save(figure, folder, "sizes")


def plot_stages(stages, folder):
    figure, axes = plt.subplots(figsize=(9, 2.4))
    for position, bits in enumerate((32, 16, 8)):
        start = 0.0
        for index, name in enumerate(STAGES):
            key = f"Stage/{name}/{bits} bits" if name != "draw" else "Stage/draw/squares/0 levels"
            width = stages[key][0]
            axes.barh(position, width, left=start, color=f"C{index}",
                      label=name if position == 0 else None)  # fmt: skip
            start += width
    axes.set_yticks(range(3), ["32 bits", "16 bits", "8 bits"])
    axes.set_xlabel("milliseconds of processor time at 1920 x 1080")
    axes.legend(fontsize=7, ncol=6, loc="lower center", bbox_to_anchor=(0.5, 1.0))
    save(figure, folder, "stages")


def plot_rivals(costs, folder):
    figure, axes = plt.subplots(figsize=(9, 2.4))
    names = list(costs)[::-1]
    bars = axes.barh(names, [costs[name] for name in names],
                     color=[COLOURS["effect" if "Tesselune" in n else "rival"] for n in names])  # fmt: skip
    axes.bar_label(bars, labels=[f"{number(costs[name])} ms" for name in names], padding=3)
    axes.set(xscale="log", xlabel="milliseconds of processor time for a frame of 1920 x 1080")
    axes.margins(x=0.2)
    save(figure, folder, "rivals")


def shot_times(stages):
    """Returns a shot's milliseconds per frame at 8 bits: whole, lower bound, sum of its stages.

    A frame takes no less than the longest stage, nor than its processor time divided by the
    number of processors.
    """
    parts = [stages[f"PNG/{part}/8 bits"][1] for part in ("read", "render", "write")]
    cpu, whole = stages["PNG/shot/8 bits"]
    return whole, max(*parts, cpu / os.cpu_count()), sum(parts)


def goals(plain, parameters, stages, memory, effect_frame, gegl_frame):
    """Returns the rows of the table of goals."""

    def verdict(is_reached):
        return "reached" if is_reached else "**not reached**"

    worst = max(plain, key=lambda row: row["sides"]["bare"]["cpu_ratio"]["median"])
    worst_ratio = worst["sides"]["bare"]["cpu_ratio"]
    spreads = {}
    for bits in (8, 16, 32):
        costs = [side(row, "effect") / pixels(row) for row in plain if row["bits"] == bits]
        spreads[bits] = max(costs) / min(costs)
    sizes = [
        1 / row["sides"][name]["cpu_ratio"]["median"]
        for row in parameters for name in ("Size 2", "Size 50", "Size 500")
    ]  # fmt: skip
    levels = max(1 / row["sides"]["5 levels"]["cpu_ratio"]["median"] for row in parameters)
    whole, bound, total = shot_times(stages)
    frames = {row["bits"]: row["frames"] for row in memory}
    gegl = gegl_frame["cpu"] / effect_frame["cpu"] if gegl_frame else None
    gegl_wall = gegl_frame["wall"] / effect_frame["wall"] if gegl_frame else None
    return [
        ["render command over bare GL calls, at most 1.02 everywhere",
         f"{ratio(worst_ratio)} at worst: {size_of(worst)}, {worst['bits']} bits",
         verdict(worst_ratio["median"] <= 1.02)],
        ["cost of a pixel constant within 10 % from 640 x 360 to the largest picture",
         ", ".join(f"{bits} bits: {(spread - 1) * 100:.0f} %" for bits, spread in spreads.items()),
         verdict(max(spreads.values()) <= 1.10)],
        ["cost independent of Size", f"{min(sizes):.2f} to {max(sizes):.2f} times that of Size 10",
         verdict(0.95 <= min(sizes) and max(sizes) <= 1.05)],
        ["5 levels at most 1.25 times 0 levels", f"{levels:.2f}", verdict(levels <= 1.25)],
        ["a shot bound by its slowest stage, not by their sum",
         f"{number(whole)} ms a frame; the bound is {number(bound)} ms, "
         f"the sum {number(total)} ms",
         verdict(whole <= 1.1 * bound)],
        ["memory of a frame beyond the host's layers, in frames: 1 at 8 and 16 bits, 2 at 32",
         ", ".join(f"{bits} bits: {count:.2f}" for bits, count in frames.items()),
         verdict(frames[8] <= 1.05 and frames[16] <= 1.05 and frames[32] <= 2.05)],
        ["15 times faster than GEGL's mosaic",
         f"{gegl:.0f} times in processor time, {gegl_wall:.0f} times in wall time"
         if gegl else "not measured",
         verdict(gegl_wall is not None and gegl_wall >= 15)],
    ]  # fmt: skip


def software_rows(software):
    """Returns a row of the table for each comparison of the software renderer."""
    rows = []
    for row in software:
        has_effect = "effect" in row["sides"]
        rows.append([
            size_of(row), row["bits"], row["shape"], row["size"], row["levels"],
            *(number(side(row, name, clock="wall_ms")) for name in ("software", "two threads")),
            f"{row['sides']['memcpy']['wall_ratio']['median']:.1f}",
            f"{row['sides']['two threads']['wall_ratio']['median']:.2f}",
            f"{row['sides']['effect']['cpu_ratio']['median']:.3f}" if has_effect else "",
        ])  # fmt: skip
    return rows


def software_goals(software, filters):
    """Returns the rows of the software renderer's table of goals."""

    def wall(width, bits, shape, size, levels=0, name="software"):
        return next(side(row, name, clock="wall_ms") for row in software
                    if (row["width"], row["bits"], row["shape"], row["size"], row["levels"])
                    == (width, bits, shape, size, levels))  # fmt: skip

    def goal(text, value, most):
        verdict = "reached" if value <= most else "**not reached**"
        return [text, f"{most:g}", f"{value:.2f}", verdict]

    def filter_ratio(name):
        return max(filters[name][clock]["ratio"] for clock in ("wall_ms", "cpu_ms"))

    def copies(size):
        return next(
            row["sides"]["memcpy"]["wall_ratio"]["median"] for row in software
            if row["size"] == size and row["width"] == 1920 and row["shape"] == "squares"
        )  # fmt: skip

    hd = (1920, 8, "squares")
    small = next(row for row in software if row["levels"] == 5 and row["shape"] == "squares")
    second = wall(3840, 8, "squares", 10) / wall(3840, 8, "squares", 10, name="two threads")
    costs = [wall(width, 8, "squares", 10) / width**2 for width in (1920, 3840, 7680)]
    return [
        goal("Size 10 over `pixelize`, the worse of processor and wall time",
             filter_ratio("pixelize"), 0.2),
        goal("the same over `pixeliz0r`", filter_ratio("pixeliz0r"), 0.5),
        goal("Size 20 and 100, one thread, over a `memcpy`", max(copies(20), copies(100)), 6),
        goal("Size 2, five levels, processor time over the effect's",
             small["sides"]["effect"]["cpu_ratio"]["median"], 0.1),
        goal("triangles over squares, Size 10 and 20",
             max(wall(1920, 8, "triangles", size) / wall(*hd, size) for size in (10, 20)), 2),
        goal("16 bits over 8", wall(1920, 16, "squares", 10) / wall(*hd, 10), 2.2),
        goal("floats over 8 bits", wall(1920, 32, "squares", 10) / wall(*hd, 10), 4.2),
        goal("3840 x 2160 on two threads over one, 1 / 1.7", 1 / second, 1 / 1.7),
        goal("cost of a pixel from 1920 x 1080 to 7680 x 4320", max(costs) / min(costs), 1.15),
    ]  # fmt: skip


def software_section(software, filters):
    filter_rows = [
        [f"`{name}`", *(f"{times[clock]['frame']:.2f}" for clock in ("wall_ms", "cpu_ms"))]
        for name, times in filters.items()
    ]  # fmt: skip
    return "\n".join([
        "## The software renderer\n",
        table(["Goal", "At most", "Measured", ""], software_goals(software, filters)),
        table(["Picture", "Bits", "Shape", "Size", "Levels", "One thread, ms", "Two threads, ms",
               "One thread over `memcpy`", "Two threads' gain", "Processor time over the effect's"],
              software_rows(software)),
        "Inside ffmpeg, on raw RGBA video of 1920 x 1080 with cells of 10 pixels:\n",
        table(["Filter", "A frame, ms", "Processor time, ms"], filter_rows),
    ])  # fmt: skip


def movies_section(movies):
    wall = movies["ffmpeg pixelize"]["wall_ms"]["ratio"]
    rows = [
        [f"`{name}`", *(f"{times[clock]['frame']:.1f}" for clock in ("wall_ms", "cpu_ms"))]
        for name, times in movies.items()
    ]  # fmt: skip
    verdict = "reached" if wall <= MOVIE_GOAL else "**not reached**"
    return "\n".join([
        "## Movies\n",
        "H.264 to H.264 of 1920 x 1080, both with the encoder's `ultrafast` at CRF 18 and cells of"
        " 10 pixels, the software renderer against ffmpeg's filter, by turns:\n",
        table(["Command", "A frame, ms", "Processor time, ms"], rows),
        f"Wall time over that of `pixelize`: {wall:.2f}. The goal of {MOVIE_GOAL:g} is {verdict}.\n",
    ])  # fmt: skip


def figures(reports, folder):
    def load(name):
        return json.loads((reports / f"{name}.json").read_text())

    floors, parameters, rivals = load("floors"), load("parameters"), load("rivals")
    floats, memory = load("floats"), load("memory")
    software, filters, movies = load("software"), load("filters"), load("movies")
    stages = stage_times(load("benchmarks"))
    plain = [row for row in floors if row["levels"] == 0 and row["shape"] == "squares"]
    at_full_hd = next(row for row in plain if pixels(row) == FULL_HD and row["bits"] == 8)
    effect_frame = {
        "cpu": side(at_full_hd, "effect"),
        "wall": side(at_full_hd, "effect", clock="wall_ms"),
    }
    rival_rows, costs = [], {"Tesselune": effect_frame["cpu"]}
    gegl_frame = None
    for name, times in rivals.items():
        if "failure" in times:
            rival_rows.append([name, "does not run here", "", "", ""])
            continue
        wall, cpu = times["wall_ms"], times["cpu_ms"]
        frame = {"cpu": cpu["frame"], "wall": wall["frame"]}
        if name == "tesselune":
            name, frame = "Tesselune", effect_frame
        else:
            costs[name] = frame["cpu"]
        if "gegl" in name:
            gegl_frame = frame
        rival_rows.append([name, *map(number, (frame["cpu"], frame["wall"],
                                               cpu["file"], wall["file"]))])  # fmt: skip

    plot_sizes(plain, folder)
    plot_stages(stages, folder)
    plot_rivals(costs, folder)

    floor_rows = [
        [size_of(row), row["bits"], row["shape"], row["levels"],
         *(number(side(row, name)) for name in ("effect", "bare", "memcpy")),
         ratio(row["sides"]["bare"]["cpu_ratio"]), ratio(row["sides"]["bare"]["wall_ratio"])]
        for row in floors
    ]  # fmt: skip
    parameter_rows = [
        [row["shape"],
         *(f"{1 / row['sides'][name]['cpu_ratio']['median']:.2f}" for name in PARAMETERS)]
        for row in parameters
    ]  # fmt: skip
    float_rows = [
        [row["bits"], *(number(side(row, name)) for name in ("floats", "effect")),
         ratio(row["sides"]["effect"]["cpu_ratio"]), ratio(row["sides"]["effect"]["wall_ratio"])]
        for row in floats
    ]  # fmt: skip
    stage_rows = [
        [name.removeprefix("Stage/"), number(cpu), number(wall)]
        for name, (cpu, wall) in sorted(stages.items()) if not name.startswith("Math/")
    ]  # fmt: skip
    math_rows = [
        [name.removeprefix("Math/"), number(cpu * 1e6)]
        for name, (cpu, _) in sorted(stages.items()) if name.startswith("Math/")
    ]  # fmt: skip

    return "\n".join([
        "## The machine\n",
        table(["", ""], machine()).replace("---:", "---"),
        "## Goals\n",
        table(["Goal", "Measured", ""],
              goals(plain, parameters, stages, memory, effect_frame, gegl_frame)).replace("---:", "---"),
        "## The render command and its lower bounds\n",
        f"![cost of a pixel and ratio to the bare GL calls]({PICTURES}/sizes.svg)\n",
        table(["Picture", "Bits", "Shape", "Levels", "Effect, ms", "Bare GL, ms", "`memcpy`, ms",
               "Effect over bare", "The same in wall time"], floor_rows),
        "## Parameters\n",
        "Times the cost at the defaults, at 1920 x 1080 and 8 bits:\n",
        table(["Shape", *PARAMETERS], parameter_rows),
        "## Colour as floats\n",
        "`TesseluneFloat.so` against `Tesselune.so`, at 1920 x 1080:\n",
        table(["Bits", "Floats, ms", "8 bits, ms", "Floats over 8 bits", "The same in wall time"],
              float_rows),
        software_section(software, filters),
        movies_section(movies),
        "## Stages\n",
        f"![the stages of a frame]({PICTURES}/stages.svg)\n",
        table(["Stage", "Processor time, ms", "Wall time, ms"], stage_rows),
        "## Alternatives\n",
        f"![processor time of a frame, by tool]({PICTURES}/rivals.svg)\n",
        table(["Tool", "A frame, ms", "in wall time", "PNG to PNG, ms", "in wall time"],
              rival_rows),
        "## Math\n",
        table(["Operation", "Nanoseconds"], math_rows),
    ])  # fmt: skip


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("reports", type=pathlib.Path, help="folder with the JSON files")
    parser.add_argument("page", type=pathlib.Path, help="the page to refresh")
    arguments = parser.parse_args()

    plt.rcParams.update({"svg.hashsalt": "tesselune", "svg.fonttype": "none", "font.size": 9})
    folder = arguments.page.parent / PICTURES
    folder.mkdir(parents=True, exist_ok=True)
    text = arguments.page.read_text()
    before, rest = text.split(BEGIN)
    _, after = rest.split(END)
    refreshed = figures(arguments.reports, folder)
    arguments.page.write_text(f"{before}{BEGIN}\n\n{refreshed}\n{END}{after}")


if __name__ == "__main__":
    main()
