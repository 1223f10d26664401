"""A screen with the looks of a Mac's: light desktop, round windows with three buttons, text of 13
points at 72 dots to the inch, black pointer."""
import os
import pathlib
import re
import string
import subprocess
import tempfile

LOOK = pathlib.Path(__file__).resolve().parent / "look"
WIDTH, HEIGHT = 960, 760
DESKTOP = "#dfe6ee"
# The placeholders in the files of LOOK, in points.
SIZES = {"left": 79, "top": 52, "padding": 7, "corner": 10, "shadow": 20, "rise": 12}
DESCRIPTOR = "{descriptor}"


class Screen:
    """An X server with a window manager and what else makes the looks; ends with the `with` block.
    A point of it has `scale` pixels in each direction."""

    def __init__(self, scale):
        self.scale = scale
        self.processes = []
        self.folder = tempfile.TemporaryDirectory()

    def server(self):
        """The command of the X server: a virtual one, whose pixels can be read from a file. With -r no key
        repeats itself that a busy machine releases late."""
        return ["Xvfb", "-r", "-screen", "0", f"{WIDTH * self.scale}x{HEIGHT * self.scale}x24",
                "-fbdir", self.folder.name]

    def __enter__(self):
        # Without a socket file, as /tmp/.X11-unix may be the host's.
        display = self.start_server(*self.server(), "-dpi", str(72 * self.scale), "-noreset",
                                    "-nolisten", "tcp", "-nolisten", "unix",
                                    "-displayfd", DESCRIPTOR)
        os.environ["DISPLAY"] = f":{display}"
        self.write_settings()
        subprocess.run(["hsetroot", "-solid", DESKTOP], stdout=subprocess.DEVNULL, check=True)
        self.start("openbox", "--sm-disable", "--config-file", self.path("openbox.xml"))
        self.start("picom", "--config", self.path("picom.conf"))
        return self

    def __exit__(self, *unused):
        for process in reversed(self.processes):
            process.terminate()
            process.wait()
        self.folder.cleanup()

    def start(self, *command, **options):
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   **options)
        self.processes.append(process)
        return process

    def start_server(self, *command):
        """Starts a server that writes its address as one line to a descriptor, which stands in its
        command as DESCRIPTOR; returns the line."""
        reading, writing = os.pipe()
        self.start(*[word.replace(DESCRIPTOR, str(writing)) for word in command],
                   pass_fds=[writing])
        os.close(writing)
        with open(reading, encoding="ascii") as address:
            return address.readline().strip()

    # The looks

    def path(self, *names):
        return str(pathlib.Path(self.folder.name, *names))

    def write_settings(self):
        """Lays down what the programs of this screen read, in its sizes."""
        theme = pathlib.Path(self.path("data", "themes", "PracticeMac", "openbox-3"))
        theme.mkdir(parents=True)
        controls = [self.path(tool, f"{tool}.conf") for tool in ("qt5ct", "qt6ct")]
        for file in controls:
            os.mkdir(os.path.dirname(file))
        for name, targets in {"openbox.xml": [self.path("openbox.xml")],
                              "picom.conf": [self.path("picom.conf")],
                              "colours.conf": [self.path("colours.conf")],
                              "controls.conf": controls, "themerc": [theme / "themerc"]}.items():
            text = string.Template((LOOK / name).read_text(encoding="utf-8")).substitute(
                folder=self.folder.name, **{name: size * self.scale for name, size in SIZES.items()})
            for target in targets:
                pathlib.Path(target).write_text(text, encoding="utf-8")
        for name in ("close", "iconify", "desk", "shade"):
            (theme / f"{name}.xbm").write_text(disc(12 * self.scale, name != "shade"))
        os.environ.update({
            "XDG_CONFIG_HOME": self.folder.name,
            "XDG_DATA_HOME": self.path("data"),
            "XCURSOR_THEME": "DMZ-Black",
            "XCURSOR_SIZE": str(24 * self.scale),
            "QT_QPA_PLATFORM": "xcb",
            "QT_QPA_PLATFORMTHEME": "qt5ct",  # qt6ct answers to this name, too
            "QT_SCALE_FACTOR": str(self.scale),
            # 72 dots to the inch; Qt itself makes at least 96 of them.
            "QT_FONT_DPI": "72",
            "QT_DPI_ADJUSTMENT_POLICY": "AdjustDpi",
        })


class NestedScreen(Screen):
    """A screen that is a window on the display that there is, of twice the pixels where these fit."""

    def __init__(self):
        root = subprocess.run(["xwininfo", "-root"], stdout=subprocess.PIPE, text=True,
                              check=True).stdout
        width, height = (int(re.search(rf"{word}: (\d+)", root).group(1))
                         for word in ("Width", "Height"))
        super().__init__(2 if width >= 2 * WIDTH and height >= 2 * HEIGHT else 1)

    def server(self):
        return ["Xephyr", "-screen", f"{WIDTH * self.scale}x{HEIGHT * self.scale}",
                "-title", "Practice Mac", "-no-host-grab"]


def disc(size, filled):
    """A round picture for the window manager, or an empty one, as X bitmap."""
    rows = []
    for y in range(size):
        inside = [filled and (2 * x + 1 - size) ** 2 + (2 * y + 1 - size) ** 2 <= size ** 2
                  for x in range(size)]
        rows += [hex(sum(bit << place for place, bit in enumerate(inside[start:start + 8])))
                 for start in range(0, size, 8)]
    return (f"#define disc_width {size}\n#define disc_height {size}\n"
            f"static unsigned char disc_bits[] = {{\n{','.join(rows)}}};\n")
