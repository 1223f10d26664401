"""Films a screen: what is seen on it as an animated picture, with the keys that are pressed and the
clicks of the pointer drawn in. A wait in which nothing changes is cut to LONGEST_WAIT."""
import mmap
import struct
import subprocess
import tempfile
import time

from PIL import Image, ImageDraw, ImageFont

FONT = "/usr/share/fonts/opentype/inter/Inter-Medium.otf"
REPAINT = 0.06  # seconds in which a program shows what a key or a click does
LONGEST_WAIT = 1  # seconds


class Film:
    """Writes the file at the end of its `with` block, unless that failed. A point has `scale` pixels in each
    direction."""

    def __init__(self, window_dump, scale, path):
        self.window_dump = window_dump
        self.scale = scale
        self.path = path
        self.keys = None
        self.click = None
        self.seen = None
        self.frames = []  # the file of each picture, and its seconds

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory()
        with open(self.window_dump, "rb") as file:
            self.pixels = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        return self

    def __exit__(self, failure, *unused):
        if failure is None:
            self.write()
        self.pixels.close()
        self.folder.cleanup()

    def take(self, seconds):
        """Shows for some seconds what is on the screen now."""
        time.sleep(REPAINT)
        seen = (self.keys, self.click, self.pixels[:])
        if seen == self.seen:
            self.frames[-1][1] += seconds
            return
        self.seen = seen
        file = f"{self.folder.name}/{len(self.frames)}.png"
        self.draw().save(file, compress_level=1)
        self.frames.append([file, seconds])

    def wait(self, seconds):
        """As take(), for a loop that waits: does nothing once one picture was shown for LONGEST_WAIT."""
        if not self.frames or self.frames[-1][1] < LONGEST_WAIT or self.pixels[:] != self.seen[2]:
            self.take(seconds)

    def draw(self):
        """The screen with keys and click. An X window dump has a header, a colour table, the rows."""
        header = struct.unpack(">25I", self.seen[2][:100])
        size, width, height, row, colours = (header[i] for i in (0, 4, 5, 12, 19))
        picture = Image.frombuffer("RGB", (width, height), self.seen[2][size + 12 * colours:],
                                   "raw", "BGRX", row, 1)
        if self.click:
            draw_ring(picture, self.click, 16 * self.scale)
        if self.keys:
            draw_caption(picture, self.keys, self.scale)
        return picture

    def write(self):
        arguments = ["-loop", "0", "-lossless", "-q", "50", "-m", "3", "-kmax", "0"]
        for file, seconds in self.frames:
            arguments += ["-d", str(round(1000 * seconds)), file]
        subprocess.run(["img2webp", *arguments, "-o", self.path], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def draw_ring(picture, place, radius):
    x, y = place
    ImageDraw.Draw(picture, "RGBA").ellipse((x - radius, y - radius, x + radius, y + radius),
                                            fill=(10, 102, 216, 50), outline=(10, 102, 216, 160),
                                            width=radius // 8)


def draw_caption(picture, text, scale):
    """A dark field with light text, in the middle of the lower margin."""
    font = ImageFont.truetype(FONT, 17 * scale)
    x, y = picture.width // 2, picture.height - 27 * scale
    half = max(font.getlength(text) / 2, 8 * scale) + 14 * scale
    drawing = ImageDraw.Draw(picture)
    drawing.rounded_rectangle((x - half, y - 17 * scale, x + half, y + 17 * scale), 9 * scale,
                              fill="#3c4450")
    drawing.text((x, y), text, "white", font, anchor="mm")
