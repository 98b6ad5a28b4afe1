#!/usr/bin/env python3
"""A calm show without music; writes ../quiet_evening.ctl.

Dusk, lilies, reeds, the peacock and the night, about a quarter of a minute each.
"""

from pathlib import Path

from show import *  # the words of a cue

SAMPLES = Path(__file__).resolve().parent.parent

show = Show()


def at(second, **wishes):
    show.cue(second * 1000, **wishes)


def steps(start, pace, device, levels, **more):
    """Moves one device through levels, `pace` seconds each."""
    for count, level in enumerate(levels):
        at(start + count * pace, **{device: level}, **more)


def dusk():
    """The sun sets behind the back curtain; the cross is lit."""
    at(0, reset=True, display=1, curtain=AMBER_LAMPS, back=1)
    steps(1, 1.2, "back", (2, 3, 4, 5))
    at(3, ring1=1)
    at(5.4, ring2=1)
    at(6.6, whites=CROSS)
    at(7.5, curtain=AMBER_LAMPS | GREEN_LAMPS, ring1=2)
    at(9, modules={4: ORANGE}, ring3=(1, 2))
    at(9.8, modules={3: ORANGE, 5: ORANGE})
    at(10.6, modules={2: RED, 6: RED}, ring3=2)
    at(11.4, modules={1: RED, 7: RED}, back=4)
    at(12.4, curtain=GREEN_LAMPS, back=3, lights=(RED, MAGENTA))
    at(13.6, back=2, ring3=1, lights=(MAGENTA, BLUE))
    at(14.8, back=1, ring2=0, ring3=0, lights=BLUE)


def lilies():
    """Candelabras open and close in turn, their colours drift along the water."""
    at(16, reset=True, display=2, whites=CROSS, ring1=1, candelabras=(1, 0), lights=(SKY, PINK),
       timer=12)
    at(16.6, modules={4: CREAM, 1: ROSE})
    at(17.2, shift=timed(RIGHT, wrap=True))
    for count in range(6):
        start = 17.2 + 2.4 * count
        near, far = (3, 1) if count % 2 == 0 else (1, 3)
        at(start, candelabras=(near, far), ring5=(far, near))
        at(start + 1.2, candelabras=2, ring5=2)
    at(24.4, shift=timed(LEFT, wrap=True), ring4=(1, 2))
    at(28, ring4=(2, 1), ring3=1)
    at(30.4, shift=STOP, candelabras=1, ring5=1, lights=SKY)
    at(31, lights=BLUE, ring3=0, ring4=0)


def reeds():
    """Slow sweeps, first side by side, then crossing."""
    at(32, reset=True, display=3, whites=CROSS, sweeps=1, ring1=1, curtain=GREEN_LAMPS, back=1,
       motion=swing(1, long=True))
    steps(33, 1, "sweeps", (2, 3, 4))
    at(34, back=2)
    at(36.5, ring4=(2, 3), modules={2: MINT, 6: MINT})
    at(38, ring4=(3, 2), modules={4: WHITE})
    at(39.5, ring4=(2, 3), modules={1: MINT, 7: MINT})
    at(41, motion=swing(1, long=True, opposed=True), ring4=2, sweeps=5, lights=(GREEN, SKY))
    at(43, copy=EXCHANGE | LIGHTS, back=3)
    at(45, copy=EXCHANGE | LIGHTS, voice=True)
    at(46, sweeps=Joined(5, 1), back=2)
    at(47, motion=STOP, sweeps=2, ring4=1, back=1, lights=(BLUE, SKY))
    at(48, sweeps=1, voice=False, lights=BLUE)
    at(48.6, sweeps=0, ring4=0, back=0)


def peacock():
    """The peacock opens over still water, bows twice and closes."""
    at(49.2, reset=True, display=4, whites=CROSS, peacock=1, peacock_a=BLUE, ring1=1, lights=BLUE)
    steps(50.2, 0.8, "peacock", (2, 3))
    at(51.8, peacock=4, peacock_b=MAGENTA, lights=(MAGENTA, BLUE), ring2=(2, 1))
    at(53, peacock=5, spout=2, modules={4: PINK})
    at(54, spout=3, peacock_a=RED, lights=(PINK, MAGENTA))
    at(55, bazookas=1, spout=4)
    at(55.6, bazookas=2, peacock_b=ORANGE, lights=(PEACH, ROSE))
    at(56.2, bazookas=3, candelabras=(1, 0))
    at(57.2, peacock=3, spout=3, candelabras=(0, 1))
    at(58.2, peacock=5, peacock_a=AMBER, lights=(CREAM, PEACH), candelabras=(2, 1), spout=5)
    at(59.6, peacock=3, spout=3, candelabras=1)
    at(60.6, peacock=5, spout=5, whites=CROSS | BAZOOKAS, bazookas=4, candelabras=2,
       lights=(WHITE, CREAM))
    at(62.4, peacock=4, spout=3, bazookas=3, candelabras=1, lights=(CREAM, PEACH))
    at(63.2, peacock=3, spout=2, bazookas=2, peacock_b=ORANGE, lights=(PEACH, ORANGE))
    at(64, peacock=2, spout=1, bazookas=1, candelabras=0, peacock_a=RED, lights=ORANGE)
    at(64.8, peacock=1, spout=0, bazookas=0, ring2=0, lights=RED)


def night():
    """Both curtains close; at last only the cross is left, then it is dark."""
    at(65.8, reset=True, display=5, whites=CROSS, back=1, curtain=AMBER_LAMPS, ring1=1, lights=RED)
    steps(66.8, 1, "back", (2, 3, 4))
    at(67.8, ring3=2, lights=(0, RED))
    at(68.8, lights=0)
    at(70, front=1, curtain=AMBER_LAMPS | GREEN_LAMPS)
    at(71, front=2, ring3=1)
    at(72, front=3, curtain=GREEN_LAMPS)
    at(73.5, front=2, back=3, ring3=0)
    at(74.5, front=1, back=2)
    at(75.5, front=0, back=1, curtain=0, modules={4: BLUE})
    at(76.5, back=0)
    at(77.5, ring1=0)
    at(79.5, reset=True, display=0)


def main():
    for scene in (dusk, lilies, reeds, peacock, night):
        scene()
    show.write(SAMPLES / "quiet_evening.ctl")


if __name__ == "__main__":
    main()
