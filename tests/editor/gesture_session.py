# SPDX-License-Identifier: MIT
"""A session of the graph editor in its window: events in, pictures and presets out."""
import json
import mmap
import struct
import subprocess
import time

LEFT, TOP, WIDTH, HEIGHT = 145, 30, 388, 240  # of the graph, pixels of the window
RESTING_PLACE = (-110, 260)  # of the pointer, off the graph
PATIENCE_SECONDS = 20
DOUBLE_CLICK_SECONDS = 0.45

WHITE, YELLOW = (255, 255, 255), (255, 255, 0)
POINT, SELECTED, TOOLTIP_FRAME = (103, 174, 250), (255, 240, 212), (0, 114, 179)


class Failure(Exception):
    pass


class Screen:
    """The X server's screen, with the graph's own pixel (0, 0) as its origin."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self.bytes = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        header = struct.unpack(">25I", self.bytes[:100])
        self.width, self.height, self.line = header[4], header[5], header[12]
        self.start = header[0] + 12 * header[19]

    def pixel(self, x, y):
        at = self.start + (TOP + y) * self.line + 4 * (LEFT + x)
        blue, green, red = self.bytes[at : at + 3]
        return red, green, blue

    def is_near(self, place, color, tolerance=8):
        return all(abs(a - b) <= tolerance for a, b in zip(self.pixel(*place), color))

    def save(self, path):
        pixels = b"".join(bytes(self.pixel(x - LEFT, y - TOP)) for y in range(self.height) for x in range(self.width))
        with open(path, "wb") as file:
            file.write(b"P6 %d %d 255\n" % (self.width, self.height) + pixels)


class Program:
    """The program modrift, its files in one folder."""

    def __init__(self, path, folder):
        self.path, self.folder = path, folder

    def file(self, name):
        return f"{self.folder}/{name}"

    def run(self, *arguments):
        done = subprocess.run([self.path, *arguments], capture_output=True, text=True, timeout=120)
        if done.returncode != 0:
            raise Failure(f"modrift {' '.join(arguments)}: {done.stderr.strip()}")
        return done.stdout

    def preset(self, name, points, curves):
        """A preset with these points in graph 1, in pixels."""
        texts = [f"{x / WIDTH!r} {1 - y / HEIGHT!r} {curves.get(i, 0.5)!r}" for i, (x, y) in enumerate(points)]
        shape, preset = self.file("start.shp"), self.file(name)
        self.run("shape", "save", "-o", shape, "--points", "; ".join(texts))
        self.run("preset", "save", "-o", preset, "--shape", f"1={shape}")
        return preset

    def graphs(self, preset):
        """All graphs as lists of (x, y, curve), x and y in pixels."""
        graphs = json.loads(self.run("preset", "show", "--json", preset))["graphs"]
        return [[(p["x"] * WIDTH, (1 - p["y"]) * HEIGHT, p["curve"]) for p in graph["points"]] for graph in graphs]


class Session:
    """One window, from its opening to its end. Places are pixels of the graph."""

    def __init__(self, program, screen, preset):
        self.screen, self.saved = screen, program.file("after.fxp")
        self.log = open(program.file("edit.log"), "w", encoding="utf-8")
        command = [program.path, "edit", "--preset", preset, "--save", self.saved]
        self.process = subprocess.Popen(command, stdout=self.log, stderr=subprocess.STDOUT)

    def begin(self, points):
        """Waits for the window with these points."""
        self.rest()
        self.see_points(*points)

    # --- Events

    def send(self, *words):
        subprocess.run(["xdotool", *map(str, words)], check=True, timeout=60)

    @staticmethod
    def to(place):
        return ["mousemove", LEFT + place[0], TOP + place[1]]

    @staticmethod
    def keys(action, keys):
        return [word for key in keys for word in (action, key)]

    def move(self, place, keys=()):
        self.send(*self.keys("keydown", keys), *self.to(place))

    def rest(self):
        self.move(RESTING_PLACE)

    def press(self, place, keys=(), button=1):
        self.send(*self.to(place), *self.keys("keydown", keys), "mousedown", button)

    def release(self, keys=(), button=1):
        self.send("mouseup", button, *self.keys("keyup", keys))

    def click(self, place, keys=(), button=1):
        self.press(place, keys, button)
        self.release(keys, button)

    def double_click(self, place):
        self.send(*self.to(place), "click", "--repeat", 2, "--delay", 40, 1)

    def begin_drag(self, start, end, keys=()):
        self.press(start, keys)
        middle = ((start[0] + end[0]) // 2, (start[1] + end[1]) // 2)
        self.send(*self.to(middle), *self.to(end))

    def drag(self, start, end, keys=()):
        self.begin_drag(start, end, keys)
        self.release(keys)
        self.rest()

    def key(self, *names):
        self.send("key", *names)

    def let_double_click_pass(self):
        """The next press at the same place is a press of its own."""
        time.sleep(DOUBLE_CLICK_SECONDS)

    def settle(self, point):
        """Waits until all events so far have been taken: the hover over a point, which comes behind them, is seen."""
        self.move((point[0] + 5, point[1] + 5))
        self.see(point, WHITE)
        self.rest()
        self.see(point, POINT)

    # --- Pictures

    def wait(self, condition, what):
        end = time.monotonic() + PATIENCE_SECONDS
        while not condition():
            if self.process.poll() is not None:
                with open(self.log.name, encoding="utf-8") as log:
                    raise Failure(f"the program ended before {what} was seen: {log.read()}")
            if time.monotonic() > end:
                raise Failure(f"never saw {what}")
            time.sleep(0.02)

    def see(self, place, color):
        self.wait(lambda: self.screen.is_near(place, color), f"the colour {color} at {place}")

    def see_no(self, place, color):
        self.wait(lambda: not self.screen.is_near(place, color), f"anything but {color} at {place}")

    def see_points(self, *points, color=POINT):
        for point in points:
            self.see(point, color)

    # --- The end

    def close_window(self):
        """As a window manager destroys it; the program then ends by itself."""
        search = ["xdotool", "search", "--onlyvisible", "--class", "modrift"]
        found = subprocess.run(search, capture_output=True, text=True, check=True).stdout
        self.send("windowclose", found.split()[0])
        self.ended(0)

    def interrupt(self):
        self.process.terminate()
        self.ended(-15)

    def ended(self, status):
        if (found := self.process.wait(timeout=PATIENCE_SECONDS)) != status:
            raise Failure(f"the program ended with {found} and not {status}")

    def stop(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
            self.send("mouseup", 1, *self.keys("keyup", ["shift", "ctrl", "alt"]))  # as a gesture that failed left them
        self.log.close()
