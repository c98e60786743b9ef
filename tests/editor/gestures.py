# SPDX-License-Identifier: MIT
"""gestures.py PROGRAM FOLDER PICTURES: what real events make of a graph in a real window; see ./gestures."""
import sys
import time
import traceback

from gesture_session import POINT, SELECTED, TOOLTIP_FRAME, WHITE, YELLOW, Failure, Program, Screen, Session

NEAR_PIXELS, NEAR_CURVE = 0.6, 1e-4  # weights are measured in whole pixels
STRAIGHT = 0.5

P0, P1, P2, P3, P4, P5 = START = [(0, 120), (80, 40), (160, 180), (240, 70), (320, 200), (388, 120)]
CURVES = {3: 0.3}
INNER = [P1, P2, P3]
FROM, TO = (60, 10), (262, 226)  # a rectangle round them, and nothing else

gestures = []


def gesture(function):
    """Makes gestures in a session. Gives the points that the graph must then have, and curves where they differ from
    the start; nothing where the graph must stay as it was."""
    gestures.append(function)
    return function


def shifted(dx, dy, points):
    return [(x + dx, y + dy) for x, y in points]


@gesture
def points(s):
    s.begin_drag(P1, (100, 90))
    s.see((110, 71), TOOLTIP_FRAME)
    s.release()
    s.rest()
    s.see((100, 90), POINT)
    s.see_no((110, 71), TOOLTIP_FRAME)
    s.begin_drag(P0, (30, 30))
    s.see((388, 30), POINT)
    s.release()
    s.rest()
    s.see((1, 30), POINT)
    s.drag(P3, (250, 100), ["alt"])
    s.see((242, 90), POINT)
    s.double_click((200, 150))
    s.rest()
    s.see((200, 150), POINT)
    s.send(*s.to((50, 200)), "click", 1, "mousedown", 1, *s.to((40, 170)), *s.to((36, 160)), "mouseup", 1)
    s.rest()
    s.see((36, 160), POINT)  # the second press of a double-click can go on as a drag
    s.double_click(P4)
    s.rest()
    s.see_no(P4, POINT)
    # A new point takes on the curve of the one behind it.
    return [(0, 30), (36, 160), (100, 90), P2, (200, 150), (242.5, 90), (388, 30)], {4: CURVES[3]}


@gesture
def selections(s):
    s.begin_drag(FROM, TO)
    s.see((150, 10), YELLOW)
    s.see_points(*INNER, color=(211, 210, 197))  # below the marquee
    s.see(P4, POINT)
    s.release()
    s.rest()
    s.see_no((150, 10), YELLOW)
    s.see_points(*INNER, color=SELECTED)
    s.drag(P2, (170, 160))
    s.see_points(*shifted(10, -20, INNER), color=SELECTED)
    s.let_double_click_pass()
    s.drag((170, 160), (166, 164))  # again, measured from where it is now
    s.see((166, 164), SELECTED)
    s.drag((86, 24), (86, 34), ["shift"])  # about the middle line
    s.see_points((86, 34), (166, 154), (246, 64), color=SELECTED)
    s.let_double_click_pass()
    s.drag((86, 34), (96, 34), ["shift", "alt"])  # about the middle of the cycle
    s.see_points((96, 34), (176, 154), (236, 64), color=SELECTED)
    s.drag(P4, (330, 150))  # a point outside moves alone
    s.see_points((96, 34), (176, 154), (236, 64), (330, 150))
    return [P0, (96, 34), (176, 154), (236, 64), (330, 150), P5]


@gesture
def control_shift_sets_the_markers(s):
    black, green = (0, 0, 0), (0, 255, 0)
    s.click(P2, ["ctrl", "shift"])
    s.click(P3, ["ctrl", "alt", "shift"])
    s.rest()
    s.wait(lambda: s.screen.is_near((162, 170), black, 60), "the loop flag")
    s.wait(lambda: s.screen.is_near((243, 58), green, 90), "the start flag")


@gesture
def hovers_wheel_and_other_buttons_change_nothing(s):
    beside_curve = s.screen.pixel(115, 110)
    s.move((85, 45))
    s.see(P1, WHITE)
    s.move((124, 114))
    s.see(P1, POINT)
    s.wait(lambda: sum(s.screen.pixel(115, 110)) > sum(beside_curve) + 60, "a halo round the curve handle")
    for place in ((200, 20), P1, (120, 110)):
        for button in (2, 3, 4, 5):
            s.click(place, button=button)
    s.press((200, 20), button=3)
    s.move((240, 200))
    s.release(button=3)
    s.settle(P2)


@gesture
def keys(s):
    def select(inner):
        s.let_double_click_pass()
        s.drag(FROM, TO)
        s.see_points(*inner, color=SELECTED)

    nudged = shifted(3, 28, INNER)
    select(INNER)
    s.key("Right", "Right", "Right", "Up", "Up", "shift+Down")
    s.see_points(*nudged, color=SELECTED)
    s.key("ctrl+z")  # all of it is one step
    s.see_points(*INNER)
    s.key("ctrl+shift+z")
    s.see_points(*nudged)
    select(nudged)
    s.key("Delete")
    for point in nudged:
        s.see_no(point, SELECTED)
    return [P0, P4, P5], {0: STRAIGHT}


@gesture
def closing_the_window_saves_too(s):
    s.drag(P3, (220, 20))
    s.see((220, 20), POINT)
    s.close_window()
    return [P0, P1, P2, (220, 20), P4, P5]


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


def run(program, screen, pictures, name, function):
    preset = program.preset("start.fxp", START, CURVES)
    before = program.graphs(preset)
    session = Session(program, screen, preset)
    try:
        session.begin(START[1:-1])
        expected = function(session)
        points, curves = (expected, CURVES) if isinstance(expected, list) else expected or (START, CURVES)
        if session.process.poll() is None:
            session.interrupt()
    finally:
        if pictures:
            screen.save(f"{pictures}/{name}.ppm")
        session.stop()
    after = program.graphs(session.saved)
    if before[1:] != after[1:]:
        raise Failure("another graph has changed too")
    expect_points(after[0], points, curves)


def main(program, folder, pictures):
    program, screen = Program(program, folder), Screen(f"{folder}/Xvfb_screen0")
    failures, begin = 0, time.monotonic()
    for function in gestures:
        name = function.__name__.replace("_", "-")
        try:
            run(program, screen, pictures, name, function)
            print(f"{name}: passed")
        except Exception as failure:
            failures += 1
            told = failure if isinstance(failure, Failure) else traceback.format_exc()
            print(f"{name}: FAILED: {told}", file=sys.stderr)
    print(f"gestures: {len(gestures) - failures} of {len(gestures)} passed in {time.monotonic() - begin:.0f} s")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:4]))
