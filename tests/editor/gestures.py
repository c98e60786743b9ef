"""gestures.py PROGRAM FOLDER PICTURES: the gestures of the graph editor and what each must give; see ./gestures."""
import os
import sys
import time
import traceback

from gesture_session import (
    GRAPH_HEIGHT,
    GRAPH_WIDTH,
    POINT,
    SELECTED,
    SELECTED_BELOW,
    TOOLTIP_FRAME,
    WHITE,
    YELLOW,
    Failure,
    Program,
    Screen,
    Session,
)

NEAR_PIXELS, NEAR_CURVE = 0.6, 1e-4  # weights are measured in whole pixels
NEAR_LEVEL = 0.007  # a pixel and a half of the graph's height
HEARD, UNHEARD = 3e-3, 1e-5  # points lose some bits on their way to the effect
STRAIGHT = 0.5

P0, P1, P2, P3, P4, P5 = START = [(0, 120), (80, 40), (160, 180), (240, 70), (320, 200), (388, 120)]
CURVES = {3: 0.3}
INNER = [P1, P2, P3]
FROM, TO = (60, 10), (262, 226)  # a rectangle round them, and nothing else
MANY = [(0, 100)] + [(30 * i, 60 if i % 2 else 180) for i in range(1, 12)] + [(388, 100)]

gestures = []


def gesture(points=None, curves=None):
    """A function that makes the gesture in a session. It gives the points that the graph must then have, and curves
    where they differ from the start; nothing where the graph must stay as it was."""
    start = (points or START, CURVES if curves is None else curves)

    def add(function):
        gestures.append((function, *start))
        return function

    return add


def moved(*changes):
    """The start's points with some of them elsewhere."""
    points = list(START)
    for old, new in changes:
        points[START.index(old)] = new
    return points


def shifted(dx, dy, *points):
    return moved(*((p, (p[0] + dx, p[1] + dy)) for p in points))


def select(s):
    s.drag(FROM, TO)
    s.see_points(*INNER, color=SELECTED)


# --- Points


@gesture()
def point_drag(s):
    s.begin_drag(P1, (100, 90))
    s.see((110, 71), TOOLTIP_FRAME)
    s.see_four_way_pointer((100, 90))
    s.picture("held")
    s.release()
    s.rest()
    s.see((100, 90), POINT)
    s.see_no((110, 71), TOOLTIP_FRAME)
    return moved((P1, (100, 90)))


@gesture(points=MANY, curves={})
def point_drag_beyond_the_parameters(s):
    s.drag(MANY[10], (310, 30))
    s.see((310, 30), POINT)
    return MANY[:10] + [(310, 30)] + MANY[11:]


@gesture()
def ends_are_linked(s):
    s.drag(P0, (30, 30))
    s.see_points((1, 30), (388, 30))
    s.picture("first")
    s.begin_drag((388, 30), (350, 150))
    s.see((1, 150), POINT)
    s.see_vertical_pointer((350, 150))
    s.picture("last-held")
    s.release()
    s.rest()
    s.see_points((1, 150), (388, 150))
    return moved((P0, (0, 150)), (P5, (388, 150)))


@gesture()
def neighbours_and_borders_stop_a_point(s):
    s.drag(P2, (300, 100))
    s.see((240, 100), POINT)
    s.drag(P1, (90, -20))
    s.see((90, 1), POINT)
    return moved((P1, (90, 0)), (P2, (240, 100)))


@gesture()
def alt_snaps_to_the_grid(s):
    s.drag(P3, (250, 100), ["alt"])
    s.see((242, 90), POINT)
    s.drag(P0, (0, 65), ["alt"])
    s.see((1, 60), POINT)
    return moved((P3, (242.5, 90)), (P0, (0, 60)), (P5, (388, 60)))


@gesture()
def double_click_adds_a_point(s):
    s.double_click((200, 150))
    s.rest()
    s.see((200, 150), POINT)
    s.send(*s.to((50, 200)), "click", 1, "mousedown", 1, *s.to((40, 170)), *s.to((36, 160)), "mouseup", 1)
    s.rest()
    s.see((36, 160), POINT)  # the second press of a double-click can go on as a drag
    points = [P0, (36, 160), P1, P2, (200, 150), P3, P4, P5]
    return points, {4: CURVES[3], 5: CURVES[3]}  # a new point takes on the curve of the one behind it


@gesture()
def double_click_removes_a_point(s):
    s.double_click(P4)
    s.rest()
    s.see_no(P4, POINT)
    s.double_click(P0)  # an end stays
    s.settle(P3)
    return [P0, P1, P2, P3, P5], {3: STRAIGHT}


# --- Curves


@gesture()
def curve_drag(s):
    s.begin_drag((120, 110), (120, 74))
    s.see_vertical_pointer((120, 74))
    s.picture("held")
    s.release()
    s.rest()
    s.drag((200, 125), (190, 101))  # rising: up is the other way
    return START, {1: 0.65, 2: 0.4, **CURVES}


@gesture(points=MANY, curves={})
def curve_drag_beyond_the_parameters(s):
    s.drag((285, 120), (285, 72))
    return MANY, {9: 0.7}


@gesture()
def alt_bends_all_curves(s):
    s.drag((120, 110), (120, 74), ["alt"])
    bent = 0.65

    def like(left, right):
        low, rising = left + right > GRAPH_HEIGHT, left > right
        return 1 - bent if low != rising else bent

    return START, {i: like(START[i][1], START[i + 1][1]) for i in range(5)}


@gesture(points=[(0, 0), (194, 240), (388, 0)], curves={})
def alt_bends_the_first_graph_to_one_side(s):
    s.drag((97, 120), (97, 84), ["alt"])
    return [(0, 0), (194, 240), (388, 0)], {0: 0.65, 1: 0.35}


# --- Selections


@gesture()
def marquee_and_its_drag(s):
    s.begin_drag(FROM, TO)
    s.see((150, 10), YELLOW)
    s.see_points(*INNER, color=SELECTED_BELOW)
    s.see(P4, POINT)
    s.picture("open")
    s.release()
    s.rest()
    s.see_no((150, 10), YELLOW)
    s.see_points(*INNER, color=SELECTED)
    s.drag(P2, (170, 160))
    s.see_points((90, 20), (170, 160), (250, 50), color=SELECTED)
    s.picture("moved")
    s.drag((170, 160), (166, 164))  # again, measured from where it is now
    s.see((166, 164), SELECTED)
    return shifted(6, -16, *INNER)


@gesture(points=MANY, curves={})
def marquee_beyond_the_parameters(s):
    s.drag((196, 16), (345, 226))
    s.see_points(*MANY[7:12], color=SELECTED)
    s.drag(MANY[9], (275, 70))
    s.see_points(*((x + 5, y + 10) for x, y in MANY[7:12]), color=SELECTED)
    return MANY[:7] + [(x + 5, y + 10) for x, y in MANY[7:12]] + MANY[12:]


@gesture()
def marquee_takes_the_last_point_at_its_release(s):
    s.begin_drag((280, 20), (395, 235))
    s.see(P4, SELECTED_BELOW)
    s.see(P5, (85, 155, 229))
    s.release()
    s.rest()
    s.see_points(P4, P5, color=SELECTED)
    s.drag(P4, (310, 170))
    s.see_points((310, 170), (388, 90), color=SELECTED)
    return moved((P0, (0, 90)), (P4, (310, 170)), (P5, (388, 90)))


@gesture()
def shift_stretches_about_the_middle_line(s):
    select(s)
    s.drag(P1, (80, 30), ["shift"])
    s.see_points((80, 30), (160, 190), (240, 60), color=SELECTED)
    return moved((P1, (80, 30)), (P2, (160, 190)), (P3, (240, 60)))


@gesture()
def shift_alt_stretches_about_the_middle_of_the_cycle(s):
    select(s)
    s.drag(P1, (90, 40), ["shift", "alt"])
    s.see_points((90, 40), (170, 180), (230, 70), color=SELECTED)
    return moved((P1, (90, 40)), (P2, (170, 180)), (P3, (230, 70)))


@gesture()
def control_selects_by_reach(s):
    third = (159, 203, 250)
    s.begin_drag(P2, (280, 180), ["ctrl"])
    s.see_points(P1, P3, color=third)
    s.picture("held")
    s.release(["ctrl"])
    s.rest()
    s.see(P2, SELECTED)
    s.let_double_click_pass()
    s.drag(P2, (160, 120))
    s.see((160, 120), SELECTED)
    s.see_points((80, 20), (240, 50), color=third)
    return moved((P1, (80, 20)), (P2, (160, 120)), (P3, (240, 50)))


@gesture()
def press_outside_ends_the_selection(s):
    select(s)
    s.drag(P4, (330, 150))
    s.see_points(*INNER, (330, 150), color=POINT)
    select(s)
    s.click((300, 20))
    s.rest()
    s.see_points(*INNER, color=POINT)
    s.drag(P1, (70, 50))
    s.see((70, 50), POINT)
    return moved((P1, (70, 50)), (P4, (330, 150)))


# --- Segments, 8 cells of 48.5 by 30 pixels


@gesture()
def shift_draws_segments(s):
    s.begin_drag((75, 150), (120, 60), ["shift"])
    s.see_points((48, 150), (145, 60))
    s.picture("held")
    s.release(["shift"])
    s.rest()
    first = [(48.5, 71.5), (48.5, 150), (96.5, 150)]
    second = [(97, 60), (145, 60), (145, 153.75)]
    return [P0, *first, *second, *START[2:]], {3: STRAIGHT, 8: CURVES[3]}


@gesture()
def shift_alt_draws_segments_at_snapped_heights(s):
    s.click((75, 140), ["shift", "alt"])
    s.rest()
    s.see((48, 150), POINT)
    first = [(48.5, 71.5), (48.5, 150), (96.5, 150), (96.5, 68.875)]
    return [P0, *first, *START[2:]], {3: STRAIGHT, 6: CURVES[3]}


# --- Markers, hover, pointers


@gesture()
def control_shift_sets_the_markers(s):
    black, green = (0, 0, 0), (0, 255, 0)
    s.click(P2, ["ctrl", "shift"])
    s.click(P3, ["ctrl", "alt", "shift"])
    s.rest()
    s.wait(lambda: s.screen.is_near((162, 170), black, 60), "the loop flag")
    s.wait(lambda: s.screen.is_near((243, 58), green, 90), "the start flag")
    s.settle(P4)
    s.picture("two-points")
    s.click(P2, ["ctrl", "alt", "shift"])
    s.rest()
    s.wait(lambda: s.screen.is_near((163, 159), green, 90), "the start flag above the loop flag")


@gesture()
def hover_shows_handles(s):
    beside_curve = s.screen.pixel(115, 110)
    s.move((85, 45))
    s.see(P1, WHITE)
    s.picture("point")
    s.move((124, 114))
    s.see(P1, POINT)
    s.wait(lambda: sum(s.screen.pixel(115, 110)) > sum(beside_curve) + 60, "a halo round the curve handle")
    s.picture("curve")
    s.rest()
    s.see((115, 110), beside_curve)


@gesture()
def shift_shows_the_hand(s):
    place, beside = (200, 20), (300, 20)
    s.move(place)
    s.see_usual_pointer(place)
    s.move(beside, ["shift"])
    hand = s.see_pointer(beside, lambda seen: seen and seen != s.arrow, "the hand")
    s.picture("hand")
    s.send("keydown", "ctrl", *s.to(place))
    s.see_usual_pointer(place)
    s.send("keyup", "ctrl", *s.to(beside))
    s.see_pointer(beside, lambda seen: seen == hand, "the hand again")
    s.send("keyup", "shift", *s.to(place))
    s.see_usual_pointer(place)


@gesture()
def wheel_and_other_buttons_do_nothing(s):
    for place in ((200, 20), P1, (120, 110)):
        for button in (2, 3, 4, 5):
            s.click(place, button=button)
    s.press((200, 20), button=3)
    s.move((240, 200))
    s.release(button=3)
    s.settle(P2)


# --- Keys


@gesture()
def delete_removes_the_selected_points(s):
    select(s)
    s.key("Delete")
    for point in INNER:
        s.see_no(point, SELECTED)
    return [P0, P4, P5], {0: STRAIGHT}


@gesture()
def arrows_nudge_the_selected_points(s):
    select(s)
    s.key("Right", "Right", "Right", "Up", "Up", "shift+Down")
    s.see_points(*shifted(3, 28, *INNER)[1:4], color=SELECTED)
    s.key("ctrl+z")  # all of it is one step
    s.see_points(*INNER)
    s.key("ctrl+shift+z")
    s.see_points(*shifted(3, 28, *INNER)[1:4])
    return shifted(3, 28, *INNER)


@gesture()
def undo_and_redo(s):
    s.drag(P1, (100, 90))
    s.see((100, 90), POINT)
    s.double_click((280, 40))
    s.rest()
    s.see((280, 40), POINT)
    s.key("ctrl+z", "ctrl+z")
    s.see_points(*START[1:5])
    s.see_no((280, 40), POINT)
    s.picture("undone")
    s.key("ctrl+shift+z")
    s.see((100, 90), POINT)
    return moved((P1, (100, 90)))


@gesture()
def closing_the_window_saves_too(s):
    s.drag(P3, (220, 20))
    s.see((220, 20), POINT)
    s.close_window()
    return moved((P3, (220, 20)))


# --- What they must give


def expect_points(found, points, curves):
    texts = [f"({x:.2f} {y:.2f})" for x, y, _ in found]
    if len(found) != len(points):
        raise Failure(f"{len(points)} points were expected, not {len(found)}: {' '.join(texts)}")
    for i, ((x, y, curve), expected) in enumerate(zip(found, points)):
        if abs(x - expected[0]) > NEAR_PIXELS or abs(y - expected[1]) > NEAR_PIXELS:
            raise Failure(f"point {i} was expected at {expected}, not {texts[i]}")
        if i + 1 < len(points) and abs(curve - curves.get(i, STRAIGHT)) > NEAR_CURVE:
            raise Failure(f"curve {i} was expected to be {curves.get(i, STRAIGHT):.4f}, not {curve:.4f}")


def expect_sound(levels, points, lines):
    """The volume follows the line in the picture, and passes through the points but those of a jump."""
    count = len(levels)
    for x, rows in lines.items():
        if rows is None:
            raise Failure(f"no line was found in column {x}")
        top, middle, bottom = rows
        level, width = levels[round(x / GRAPH_WIDTH * count)], (bottom - top) / 2 / GRAPH_HEIGHT
        shown = 1 - middle / GRAPH_HEIGHT
        if abs(level - shown) > NEAR_LEVEL + width:
            raise Failure(f"the line is at {shown:.4f} in column {x}, but the volume is {level:.4f}")
    for i, (x, y) in enumerate(points[:-1]):
        if any(abs(x - other) < 1 for other, _ in points[:i] + points[i + 1 :]):
            continue
        level = levels[round(x / GRAPH_WIDTH * count)]
        if abs(level - (1 - y / GRAPH_HEIGHT)) > 2 * NEAR_LEVEL:
            raise Failure(f"point {i} is at {1 - y / GRAPH_HEIGHT:.4f}, but the volume there is {level:.4f}")


def free_columns(points):
    """Columns in which no handle hides the line."""
    handles = [x for x, _ in points]
    handles += [(a + b) / 2 for a, b in zip(handles, handles[1:])]
    return [x for x in range(12, GRAPH_WIDTH, 7) if all(abs(x - handle) > 8 for handle in handles)]


class Run:
    def __init__(self, program, screen, pictures):
        self.program, self.screen, self.pictures = program, screen, pictures
        self.name = ""
        self.starts = {}

    def start(self, points, curves):
        """A preset with its graphs and levels."""
        key = (*points, *curves.items())
        if key not in self.starts:
            preset = self.program.preset(f"start-{len(self.starts)}.fxp", points, curves)
            self.starts[key] = (preset, self.program.graphs(preset), self.program.levels(preset))
        return self.starts[key]

    def keep_picture(self, name):
        if self.pictures:
            self.screen.save(os.path.join(self.pictures, f"{self.name}-{name}.png"))

    def lines(self, session, points):
        """Where the line is, by columns."""
        session.rest()
        session.see_usual_pointer()
        lines = {}
        for x in free_columns(points):
            session.wait(lambda x=x: self.screen.line_rows(x) is not None, f"the line in column {x}")
            lines[x] = self.screen.line_rows(x)
        return lines

    def one(self, function, points, curves):
        self.name = function.__name__.replace("_", "-")
        preset, before, old_levels = self.start(points, curves)
        session = Session(self.program, self.screen, preset, self.keep_picture)
        try:
            session.begin(points[1:-1])
            expected = function(session)
            lines = {}
            wanted, wanted_curves = (expected, curves) if isinstance(expected, list) else expected or (points, curves)
            if session.process.poll() is None:
                lines = self.lines(session, wanted)
                self.keep_picture("after")
                session.interrupt()
        except Exception:
            self.keep_picture("failed")
            raise
        finally:
            session.stop()
        after, levels = self.program.graphs(session.saved), self.program.levels(session.saved)
        if before[1:] != after[1:]:
            raise Failure("another graph has changed too")
        expect_points(after[0], wanted, wanted_curves)
        expect_sound(levels, wanted, lines)
        change = max(abs(a - b) for a, b in zip(old_levels, levels))
        if (change > UNHEARD) if expected is None else (change < HEARD):
            raise Failure(f"the volume has changed by {change:.6f}")
        print(f"{self.name}: {len(wanted)} points, volume changed by up to {change:.3f}")


def main(program, folder, pictures):
    run = Run(Program(program, folder), Screen(os.path.join(folder, "Xvfb_screen0")), pictures)
    failures, begin = 0, time.monotonic()
    for case in gestures:
        try:
            run.one(*case)
        except Failure as failure:
            failures += 1
            print(f"{run.name}: FAILED: {failure}", file=sys.stderr)
        except Exception:
            failures += 1
            print(f"{run.name}: FAILED: {traceback.format_exc()}", file=sys.stderr)
    print(f"gestures: {len(gestures) - failures} of {len(gestures)} passed in {time.monotonic() - begin:.0f} s")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:4]))
