#!/usr/bin/env python3
"""Writes flight.json and brush.json: hand-like motion of the device, 100 samples a second.

    python3 tests/scenarios/make_flight.py [FOLDER]     writes them into FOLDER, or beside this file

A flight is a list of movements, each a call of `Hand.move`:

    hand.move(PUSH, 2000, 0.5)      push for two seconds, with half the force
    hand.move(diagonal(LEFT, UP), 3500, during=click)      a click in the middle of the movement
    hand.rest(300)                  the hand is off the cap
    hand.step(mouse=[40, 20])       any other step of a scenario, at this time

The force of a movement rises and falls smoothly (sine squared). Some of it leaks into the other
axes, and the tremor of a hand (8 to 12 Hz) is added. The random numbers have fixed seeds, so every
run writes the same bytes; a test compares them with the files here. After a change, run this
program, then write the expected summaries anew (docs/testing.md).
"""

import json
import math
import pathlib
import random
import sys

SAMPLE_MS = 10
FULL = 350  # device counts at full deflection

# Device axes: 0 sideways, 1 push and pull, 2 up and down, 3 to 5 the rotations about them.
PUSH, PULL = {1: 1.0}, {1: -1.0}
LEFT, RIGHT = {0: -1.0}, {0: 1.0}
UP, DOWN = {2: 1.0}, {2: -1.0}
LARGER, SMALLER = {4: 1.0}, {4: -1.0}
REST = {}


def diagonal(*parts):
    merged = {}
    for part in parts:
        for axis, weight in part.items():
            merged[axis] = merged.get(axis, 0.0) + 0.7 * weight
    return merged


class Hand:
    def __init__(self, seed):
        self.random = random.Random(seed)
        self.now = 0
        self.steps = []

    def step(self, **what):
        self.steps.append({"at": self.now, **what})

    def tremor(self, axis):
        hertz = 8 + 4 * ((axis * 37) % 10) / 10
        phase = 2 * math.pi * hertz * self.now / 1000
        return 4 * math.sin(phase + axis) + self.random.gauss(0, 1.5)

    def sample(self, direction, strength):
        axes = []
        for axis in range(6):
            wanted = direction.get(axis, 0.0) * strength * FULL
            leak = 0.08 * strength * FULL * math.sin(0.7 * axis + self.now / 900) if direction else 0
            shake = self.tremor(axis) if direction else 0
            axes.append(max(-32768, min(32767, round(wanted + leak + shake))))
        self.step(axes=axes)
        self.now += SAMPLE_MS

    def move(self, direction, milliseconds, strength=1.0, during=None):
        samples = milliseconds // SAMPLE_MS
        for i in range(samples):
            if during and i == samples // 2:
                during(self)
            self.sample(direction, strength * math.sin(math.pi * (i + 0.5) / samples) ** 2)

    def rest(self, milliseconds):
        for _ in range(milliseconds // SAMPLE_MS):
            self.sample(REST, 0.0)


def click(hand):
    hand.step(click="down")
    hand.step(click="up")


def write(file, scenario):
    steps = scenario.pop("steps")
    head = json.dumps(scenario)[:-1]
    lines = ",\n  ".join(json.dumps(step) for step in steps)
    file.write_text(f'{head}, "steps": [\n  {lines}\n]}}\n')


def flight(file):
    hand = Hand(20)
    hand.step(call=["SP Interface", "Startup"])
    hand.now = 1000
    hand.rest(500)
    hand.move(PUSH, 2000)
    hand.rest(700)
    hand.move(LARGER, 2000, 0.45)
    hand.rest(300)
    hand.move(RIGHT, 3000, 0.8, click)
    hand.rest(300)
    hand.move(SMALLER, 2000, 0.45)
    hand.move(UP, 2500, 0.6)
    hand.move(PULL, 3000, 0.9)
    hand.rest(700)
    hand.move(diagonal(LEFT, UP), 3500, during=click)
    hand.move(diagonal(PUSH, RIGHT), 3000)
    hand.move(LARGER, 1200, 0.5)
    hand.rest(500)
    hand.step(active=False)
    hand.move(PUSH, 1500)
    hand.move(SMALLER, 1500)
    hand.rest(500)
    hand.step(active=True)
    hand.move(SMALLER, 1200, 0.5)
    hand.move(PUSH, 2000, 0.5)
    hand.step(mouse=[40, 20])
    hand.move(PULL, 2000, 0.7)
    hand.step(mouse=[500, 350])
    hand.move(DOWN, 3000, 1.0, click)
    hand.rest(900)
    hand.step(click="down")
    hand.step(click="up")
    for strength in (0.3, 0.5):
        hand.move(LARGER, 1500, strength)
        hand.move(SMALLER, 1500, strength)
    hand.move(diagonal(PULL, DOWN), 3000)
    hand.move(LEFT, 3000, 0.3)
    hand.move(diagonal(RIGHT, DOWN), 4000, 0.5, click)
    hand.move(UP, 2000, 0.2)
    hand.move(PUSH, 2000, 0.9)
    hand.rest(61000 - hand.now)
    hand.step(call=["SP Interface", "Shutdown"])
    write(file, {"host": {"redrawDelay": 60}, "steps": hand.steps})


def brush(file):
    hand = Hand(21)
    hand.step(call=["SP Interface", "Startup"])
    hand.now = 1000
    hand.move(LARGER, 2000, 0.3)
    hand.rest(300)
    hand.move(SMALLER, 1000, 0.4)
    hand.rest(300)
    hand.step(tool="magicWandTool")
    hand.step(brush=None)
    hand.move(LARGER, 1000)
    hand.rest(300)
    hand.step(tool="eraserTool")
    hand.step(brush=40)
    hand.step(toolbarPending=True)
    hand.move(LARGER, 700, 0.3)
    hand.step(toolbarPending=False)
    hand.move(LARGER, 1000, 0.3)
    hand.rest(300)
    for layout in ("German", "French", "SwissGerman"):
        hand.step(call=["SP Interface", "Shutdown"])
        hand.step(layout=f"com.apple.keylayout.{layout}")
        hand.step(call=["SP Interface", "Startup"])
        hand.step(active=True)
        hand.move(SMALLER, 900, 0.2)
        hand.rest(200)
        hand.move(LARGER, 900, 0.25)
        hand.rest(200)
    hand.step(call=["SP Interface", "Shutdown"])
    write(file, {"host": {"redrawDelay": 25}, "steps": hand.steps})


if __name__ == "__main__":
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent
    flight(folder / "flight.json")
    brush(folder / "brush.json")
