"""Writes the table of picture formats into a document, from round trips through the command."""

import os
import re
import subprocess
import sys
import tempfile

COMMAND, DOCUMENT = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
BEGIN, END = "<!-- table -->\n", "<!-- end of table -->\n"

WRITTEN = [("PNG", "png"), ("JPEG", "jpg"), ("OpenEXR", "exr"), ("TIFF", "tif"), ("DPX", "dpx"),
           ("WebP", "webp"), ("GIF", "gif"), ("BMP", "bmp"), ("TGA", "tga"), ("PNM", "ppm"),
           ("Radiance HDR", "hdr")]
REFUSED = ["jp2", "fits", "iff", "sgi", "rla", "ico", "heic"]
BITS = ["8", "10", "12", "16", "half", "float"]
COLOUR = (0.8, 0.4, 0.2)  # of every pixel: the effect leaves an even picture unchanged


def run(*words):
    environment = dict(os.environ, TESSELUNE_RENDERER="software")
    return subprocess.run(words, capture_output=True, text=True, env=environment, check=False)


def render(*words):
    return run(COMMAND, "render", *words)


def oiiotool(*words):
    done = run("oiiotool", *words)
    if done.returncode != 0:
        raise RuntimeError(done.stderr)
    return done.stdout


def make_source():
    colour = ",".join(map(str, COLOUR))
    oiiotool("--create", "64x48", "5", "--chnames", "R,G,B,A,Z", "--fill:color=" + colour + ",1,7",
             "64x48", "--attrib", "Copyright", "someone", "-d", "float", "-o", "in.exr")
    # Makes alpha 0.5, because WebP drops an alpha channel that is opaque everywhere.
    oiiotool("in.exr", "--ch", "R,G,B,A=0.5", "-o", "clear.exr")


def tell(file):
    """Returns a file's bits per channel, its number of channels, and oiiotool's whole description."""
    text = oiiotool("--info", "-v", file)
    kind = re.search(r"(\d+) channel, ([a-z0-9/]+) ", text)
    bits = re.search(r"BitsPerSample: (\d+)", text)
    names = {"uint8": "8", "uint16": "16"}
    kinds = kind.group(2).split("/")[0]
    return bits.group(1) if bits and kinds.startswith("uint") else names.get(kinds, kinds), \
        int(kind.group(1)), text


def colour_of(file):
    """Returns the mean of each channel, with 1 for white."""
    text = oiiotool("-d", "float", file, "-o", "mean.exr", "--stats", "mean.exr")
    return [float(value) for value in re.search(r"Stats Avg: ([-0-9. ]+)", text).group(1).split()]


def bits_of(extension):
    """Returns the bits per channel that the format stores. Raises RuntimeError for a wrong file."""
    found = []
    for bits in BITS:
        out = f"bits.{extension}"
        if render("in.exr", out, "--bits", bits).returncode != 0:
            continue
        had, _, _ = tell(out)
        if had != bits:
            raise RuntimeError(f"{out} has {had} bits instead of {bits}")
        loss = 0.03 if extension in ("jpg", "webp", "gif", "hdr") else 0.004
        if any(abs(a - b) > loss for a, b in zip(colour_of(out), COLOUR)):
            raise RuntimeError(f"{out} holds {colour_of(out)}")
        found.append(bits)
    return found


def channels_of(extension):
    found = []
    for name, count in (("grey", 1), ("grey-alpha", 2), ("rgb", 3), ("rgba", 4)):
        out = f"channels.{extension}"
        if render("clear.exr", out, "--channels", name).returncode == 0:
            had = tell(out)[1]
            is_opaque = had == 4 and colour_of(out)[3] == 1  # some readers always add alpha
            if had != count and not (count == 3 and is_opaque):
                raise RuntimeError(f"{out} has {had} channels instead of {count}")
            found.append(name)
    return found


def compressions_of(extension):
    refusal = render("in.exr", f"c.{extension}", "--compression", "?").stderr
    names = re.search(r"\?: \S.* has (.*)", refusal)
    return re.split(r", | or ", names.group(1).strip()) if names and "no choice" not in refusal \
        else []


def parts_of(extension):
    if extension == "gif":  # a GIF with several pictures is a movie
        return False
    source = f"parts.{extension}"
    done = run("oiiotool", "in.exr", "--ch", "R,G,B", "--dup", "--siappend", "-o", source)
    if done.returncode != 0 or render(source, f"out-{source}").returncode != 0:
        return False
    return "2 subimages" in oiiotool("--info", f"out-{source}")


def yes(holds):
    return "yes" if holds else "no"


def row(name, extension):
    out = f"out.{extension}"
    done = render("in.exr", out, "--size", "8")
    if done.returncode != 0 or render(out, "again.exr").returncode != 0:
        raise RuntimeError(f"{name}: {done.stderr}")
    _, _, text = tell(out)
    has_settings = run(COMMAND, "render", "in.exr", "again.exr", "--preset", out).returncode == 0
    return [name, ", ".join(bits_of(extension)), ", ".join(channels_of(extension)),
            ", ".join(compressions_of(extension)) or "-", yes(parts_of(extension)),
            yes(re.search(r"channel list:.*\bZ\b", text)), yes('"someone"' in text),
            yes(has_settings)]


def refusals():
    for extension in REFUSED:
        done = render("in.exr", f"out.{extension}")
        if done.returncode == 0:
            raise RuntimeError(f"out.{extension} was written")
        reason = re.search(r": ([^:]*?); ", done.stderr)
        yield [f"`.{extension}`", reason.group(1) if reason else done.stderr.strip()]


def table(heads, rows):
    lines = [heads, ["---"] * len(heads), *rows]
    return "".join("| " + " | ".join(line) + " |\n" for line in lines)


def main():
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        make_source()
        text = table(["Format", "Bits", "Channels", "Compression", "Parts", "Others", "Metadata",
                      "Settings"], [row(*one) for one in WRITTEN])
        text += "\n" + table(["Not written", "Why"], list(refusals()))
    with open(DOCUMENT, encoding="utf-8") as file:
        before, rest = file.read().split(BEGIN)
    with open(DOCUMENT, "w", encoding="utf-8") as file:
        file.write(before + BEGIN + text + END + rest.split(END)[1])


main()
