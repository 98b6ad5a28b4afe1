#!/usr/bin/env python3
"""The choreography of mountain_hall.mp3; writes ../mountain_hall.ctl.

The trolls of the theme are spots of light that sneak from module to module: the higher the note,
the farther to the right. From section to section they grow in number, the water in height and the
light in colour, until the whole fountain stamps, falls apart and stands up for the last chord.
"""

from pathlib import Path

from score import Score
from show import *  # the words of a cue

SAMPLES = Path(__file__).resolve().parent.parent

# The theme, by bars: (beat, half-tones above the first note). A long note is accented.
MINOR = [
    [(1, 0), (1.5, 2), (2, 3), (2.5, 5), (3, 7), (3.5, 3), (4, 7)],
    [(1, 6), (1.5, 2), (2, 6), (3, 5), (3.5, 1), (4, 5)],
    [(1, 0), (1.5, 2), (2, 3), (2.5, 5), (3, 7), (3.5, 3), (4, 7), (4.5, 12)],
    [(1, 10), (1.5, 7), (2, 3), (2.5, 7), (3, 10)],
]
MAJOR = [
    [(1, 0), (1.5, 2), (2, 4), (2.5, 5), (3, 7), (3.5, 4), (4, 7)],
    [(1, 8), (1.5, 4), (2, 8), (3, 7), (3.5, 4), (4, 7)],
    [(1, 0), (1.5, 2), (2, 4), (2.5, 5), (3, 7), (3.5, 4), (4, 7)],
    [(1, 8), (1.5, 4), (2, 8), (3, 7)],
]
LONG = {(1, 4), (2, 2), (2, 4), (4, 3)}  # (bar of the phrase, beat)
LONG_MAJOR = LONG | {(3, 4), (4, 2)}

# The module on which a note of the theme stands.
PLACE = {0: 1, 1: 2, 2: 2, 3: 3, 4: 3, 5: 4, 6: 5, 7: 5, 8: 6, 10: 6, 12: 7}

score = Score(SAMPLES / "music" / "beats.txt")
show = Show()


def at(bar, beat=1.0, **wishes):
    show.cue(score.at(bar, beat), **wishes)


def notes(theme, first_bar):
    """The notes of a phrase: bar, beat, half-tones, whether the note is long."""
    long_notes = LONG if theme is MINOR else LONG_MAJOR
    for number, bar in enumerate(theme, start=1):
        for beat, pitch in bar:
            yield first_bar + number - 1, beat, pitch, (number, beat) in long_notes


def beats(first_bar, last_bar):
    for bar in range(first_bar, last_bar + 1):
        for beat in range(1, 5):
            yield bar, beat


def group_of(module):
    return (module - 1) % 2


def for_group(group, value, other):
    return (value, other) if group == 0 else (other, value)


# --- The hall: one spot of light sneaks through the dark ------------------------------------------


def sneak(first_bar, spot, glow):
    """One light walks with the melody, a step of the scale by a shift, a leap by a switch. A thin
    column rises with it. Returns the module where it ends."""
    here = None
    for bar, beat, pitch, is_long in notes(MINOR, first_bar):
        module = PLACE[pitch]
        color = glow if is_long else spot
        height = 1 + pitch // 4 + is_long
        column = for_group(group_of(module), height, 1)
        if here and module == here[0] + 1 and color == here[1]:
            at(bar, beat, shift=RIGHT, ring5=column)
        else:
            lights = {module: color}
            if here and here[0] != module:
                lights[here[0]] = 0
            at(bar, beat, modules=lights, ring5=column)
        here = module, color
    return here[0]


def meet(first_bar):
    """A blue light walks with the melody and a red one against it."""
    lit = {}
    for bar, beat, pitch, is_long in notes(MINOR, first_bar):
        module = PLACE[pitch]
        now = {module: SKY, 8 - module: ROSE} if is_long else {module: BLUE, 8 - module: RED}
        if module == 4:
            now = {4: PINK if is_long else MAGENTA}
        column = for_group(group_of(module), 1 + pitch // 4 + is_long, 1)
        at(bar, beat, modules={**dict.fromkeys(lit, 0), **now}, ring5=column)
        lit = now


def the_hall():
    show.cue(0, reset=True, display=0)
    # The horn calls from the middle, under the cross on the mountain.
    at(1, reset=True, display=1, whites=CROSS, voice=True, spout=1, modules={4: BLUE})
    at(1, 2, spout=2)
    at(1, 3, spout=3)
    at(1, 4, spout=2)
    at(1, 4.5, spout=1)

    at(2, voice=False, spout=0, modules={4: 0}, ring1=1)
    last = sneak(2, BLUE, SKY)
    at(5, 4, ring5=1)
    at(5, 4.5, modules={last: 0})

    # Again, and a red one comes to meet it; the bassoons answer on beats 2 and 4.
    at(6, ring1=1, ring2=1)
    meet(6)
    for bar, beat in beats(6, 9):
        answer = {2: (2, 0), 4: (0, 2)}.get(beat, 0)
        at(bar, beat, candelabras=answer)
    at(9, 3.5, ring5=(1, 2))
    at(9, 4, ring5=1, ring2=0)
    at(9, 4.5, modules={2: 0, 6: 0}, candelabras=0)


# --- Footsteps: pairs of light walk outward before a green wall -----------------------------------

PAIR = {0: 0, 2: 1, 4: 1, 5: 2, 7: 2, 8: 3}


def walk_in_pairs(first_bar, colors, lowest):
    """Two lights part as the melody rises and meet where it begins. `colors` are those of a short
    and a long note, by bars."""
    lit = set()
    for bar, beat, pitch, is_long in notes(MAJOR, first_bar):
        away = PAIR[pitch]
        now = {4 - away, 4 + away}
        lights = dict.fromkeys(lit - now, 0)
        lights.update(dict.fromkeys(now, colors[bar - first_bar][is_long]))
        high = lowest + away
        at(bar, beat, modules=lights, ring5=for_group(group_of(4 + away), high, lowest))
        lit = now


def footsteps():
    at(10, reset=True, display=2, ring1=(2, 1))
    walk_in_pairs(10, [(AMBER, CREAM)] * 4, lowest=1)
    at(12, back=1, curtain=GREEN_LAMPS)
    for bar, beat in beats(10, 17):
        if beat in (1, 3):  # left foot, right foot
            at(bar, beat, ring1=(2, 1) if beat == 1 else (1, 2))
    at(13, 4, candelabras=1)
    at(13, 4.5, back=2, candelabras=2)

    # The clarinet joins an octave higher over the horns' long note.
    at(14, sweeps=2, motion=swing(1, long=True), ring2=1, candelabras=0, back=3,
       curtain=AMBER_LAMPS)
    walk_in_pairs(14, [(GREEN, MINT)] * 2 + [(MINT, WHITE)] * 2, lowest=2)
    for bar in (14, 15, 16):
        at(bar, 3, ring3=2, sweeps=3)
        at(bar, 4.5, ring3=1, sweeps=2)
    at(16, 1, curtain=GREEN_LAMPS)
    # Lead back: both curtain colours, and the groups lean on each other.
    at(17, 1, curtain=GREEN_LAMPS | AMBER_LAMPS, back=4)
    at(17, 1.5, ring2=Joined(3, 1), ring3=Joined(1, 4))
    at(17, 2, front=2)
    at(17, 2.5, front=1, back=3)
    at(17, 3, ring3=Joined(1, 2), sweeps=1, motion=STOP)
    at(17, 4, ring2=1, ring3=0, sweeps=0, front=0, back=1)


# --- Sprites: plucked water in pale colours, then the peacock -------------------------------------


def sprites():
    at(18, reset=True, display=3, ring5=(4, 1), candelabras=(0, 4), lights=(SKY, PINK),
       modules={4: WHITE}, timer=5)
    at(18, 2, shift=timed(RIGHT, wrap=True))
    high = 3
    for bar, beat in beats(18, 21):
        if (bar, beat) == (18, 1):
            continue
        if beat in (1, 3):
            high = {18: 4, 19: 3, 20: 5, 21: 4}[bar] - (beat == 3 and bar != 20)
        column, pluck = ((high, 1), (0, 4)) if beat in (1, 3) else ((1, high), (4, 0))
        at(bar, beat, ring5=column, candelabras=pluck)
    at(19, 1, ring4=1)
    at(20, 1, ring4=2, ring3=1)
    at(20, 4.5, ring5=(1, 5))
    at(21, 1, shift=STOP, lights=(MINT, WHITE), ring3=2)
    at(21, 2, lights=(WHITE, MINT))
    at(21, 3, copy=TO_B | LIGHTS, ring4=3, candelabras=3, ring5=3)
    at(21, 4, lights=(SKY, PINK), ring4=2, candelabras=2, ring5=2)

    # An octave higher: a Wedding Cake changes sides, the peacock spreads with the oboe.
    at(22, candelabras=0, valve=(WEDDING_CAKE, 0), peacock=2, peacock_a=MAGENTA,
       lights=(SKY, PINK))
    fan = {22: (2, 3, 4, 4), 23: (4, 4, 3, 3), 24: (2, 3, 4, 5)}
    for bar, beat in beats(22, 24):
        if (bar, beat) != (22, 1):
            is_long = beat == 4 or (bar == 23 and beat == 2)
            at(bar, beat, peacock=fan[bar][beat - 1],
               **({"peacock_b": AMBER} if is_long else {"peacock_a": MAGENTA}))
        if beat in (1, 3) and (bar, beat) != (22, 1):
            at(bar, beat, copy=EXCHANGE | WATER | (LIGHTS if beat == 1 else 0))
    # The bass walks up, the lights run out, the water sinks.
    at(25, copy=TO_A | WATER, lights=PINK, peacock=4, peacock_a=MAGENTA)
    at(25, 2, peacock=3, valve=2, timer=4)
    at(25, 2.5, timer=2, shift=timed(LEFT, wrap=False))
    at(25, 3, peacock=2, valve=2)
    at(25, 3.5, peacock=1, valve=1)
    at(25, 4, peacock=0)
    at(25, 4.5, shift=STOP)


# --- The chase: fire, faster and higher with every bar --------------------------------------------


def walk_through_fire(first_bar, fires, spot):
    """The light of the beginning is back. `fires` are the colours of both groups around it, by
    bars."""
    for bar, beat, pitch, _ in notes(MAJOR[:len(fires)], first_bar):
        fire = fires[bar - first_bar]
        lights = {module: fire[group_of(module)] for module in range(1, 8)}
        at(bar, beat, modules={**lights, PLACE[pitch]: spot})


def chase():
    at(26, reset=True, display=4, valve=(3, 1), ring1=2,
       lights=(ORANGE, RED), motion=swing(2), timer=6)
    for bar, beat, pitch, is_long in notes(MAJOR, 26):
        if beat == int(beat) and (bar, beat) != (26, 1):
            high = 2 + pitch // 4
            left = beat in (1, 3)
            at(bar, beat, ring3=for_group(not left, high, 1), ring5=for_group(not left, high, 2),
               candelabras=2 if is_long else 0)
    for bar in (27, 28, 29):
        at(bar, copy=EXCHANGE | LIGHTS)
    walk_through_fire(26, [(ORANGE, RED), (RED, ORANGE)] * 2, CREAM)
    at(28, ring1=3, sweeps=3)
    at(29, 4, ring3=2, ring5=2, candelabras=1)

    # Forte: the sweeps cross, bazookas grow with the trumpets.
    at(30, valve=3, lights=(AMBER, ORANGE), motion=swing(3, long=True, opposed=True), bazookas=1,
       candelabras=2)
    for bar, beat, pitch, is_long in notes(MAJOR, 30):
        if beat != int(beat) or (bar, beat) == (30, 1) or bar == 33:
            continue
        high = 3 + (pitch > 4)
        at(bar, beat, ring3=high, ring5=min(5, high + 1), candelabras=4 if is_long else 2,
           bazookas=2 if is_long else 1)
    at(31, lights=(ORANGE, RED))
    walk_through_fire(30, [(AMBER, ORANGE), (ORANGE, RED)], WHITE)

    # The snare roll: embers race from module to module, the sweeps throb.
    at(32, ring1=4, ring2=3, timer=2, lights=RED, modules={2: RUST, 4: PEACH, 6: EMBER})
    at(32, 1.5, shift=timed(RIGHT, wrap=True))
    at(32, 2, sweeps=5, pulse=(UP, DOWN), bazookas=2)
    at(32, 3, bazookas=3, ring2=4)
    at(32, 4, bazookas=4)
    at(33, ring1=4, ring4=4, candelabras=4, curtain=AMBER_LAMPS, back=2, bazookas=4)
    at(33, 1.5, back=3)
    at(33, 2, back=4, front=2, ring1=5, ring3=5, candelabras=5, timer=1,
       shift=timed(LEFT, wrap=True))
    at(33, 2.5, front=4)
    at(33, 3, back=5, front=5, bazookas=5, spout=3, ring5=5)
    # A breath before the crash.
    at(33, 4, valve=1, pulse=STOP, sweeps=0, candelabras=0, bazookas=1, spout=0, front=0, back=1)
    at(33, 4.5, shift=STOP, lights=EMBER, motion=STOP)


# --- Tutti: the whole hall stamps -----------------------------------------------------------------


def stamp(bar, beat, lights):
    """An accent: everything jumps, and falls back half a beat later."""
    at(bar, beat, valve=5, candelabras=5, bazookas=5, spout=5, lights=lights)
    at(bar, beat + 0.5, candelabras=3, bazookas=3, spout=3, ring1=3, ring5=4, sweeps=4)


def between(bar, beat, lights, high):
    """A beat without an accent: the water gathers for the next one."""
    at(bar, beat, valve=(high, high - 1) if beat in (1, 3) else (high - 1, high), lights=lights,
       candelabras=2, bazookas=2)


def tutti():
    at(34, reset=True, display=5, valve=5, candelabras=5, bazookas=5, spout=5, back=5,
       curtain=AMBER_LAMPS, lights=(PEACH, WHITE), motion=swing(3, long=True, opposed=True))
    at(34, 1.5, candelabras=4, bazookas=3, ring1=4)
    between(34, 2, (RED, ORANGE), 3)
    at(34, 2.5, spout=3)
    between(34, 3, (ORANGE, RED), 4)
    stamp(34, 4, (AMBER, PEACH))
    between(35, 1, (RED, ORANGE), 4)
    stamp(35, 2, (PEACH, AMBER))
    between(35, 3, (ORANGE, RED), 4)
    stamp(35, 4, (AMBER, PEACH))
    between(36, 1, (RED, ORANGE), 4)
    at(36, 1, back=3)
    between(36, 2, (ORANGE, RED), 4)
    at(36, 2, back=4)
    between(36, 3, (RED, AMBER), 4)
    at(36, 3, back=5)
    stamp(36, 4, (CREAM, PEACH))
    # The long note of the fourth bar, carried by both groups together.
    at(37, candelabras=2, bazookas=2, lights=(ORANGE, AMBER), ring1=3, ring2=3, spout=3)
    at(37, 2, ring3=4, ring4=4, lights=(AMBER, ORANGE))
    at(37, 3, spout=5, ring3=Joined(5, 4), ring4=Joined(4, 5), candelabras=Joined(5, 3),
       lights=(CREAM, PEACH), curtain=GREEN_LAMPS | AMBER_LAMPS)
    at(37, 4, front=1, ring3=3, ring4=3, candelabras=3, lights=(ORANGE, RED), curtain=AMBER_LAMPS)
    at(37, 4.5, front=0, back=0, valve=2, candelabras=1, spout=0, lights=RED)

    # An octave higher, in violet and rose, with the peacock.
    at(38, valve=5, candelabras=5, bazookas=5, spout=5, peacock=5, peacock_a=MAGENTA,
       whites=BAZOOKAS, lights=(PINK, WHITE))
    at(38, 1.5, candelabras=4, bazookas=3, ring1=4)
    peacock = {38: (5, 3, 4, 5), 39: (3, 5, 3, 5), 40: (3, 3, 4, 5)}
    for bar, heights in peacock.items():
        for beat, height in enumerate(heights, start=1):
            accent = height == 5
            at(bar, beat, peacock=height,
               **({"peacock_b": ORANGE} if accent else {"peacock_a": MAGENTA}))
    between(38, 2, (BLUE, MAGENTA), 4)
    between(38, 3, (MAGENTA, BLUE), 4)
    stamp(38, 4, (ROSE, PINK))
    between(39, 1, (BLUE, MAGENTA), 4)
    stamp(39, 2, (PINK, ROSE))
    between(39, 3, (MAGENTA, BLUE), 4)
    stamp(39, 4, (ROSE, PINK))
    between(40, 1, (BLUE, MAGENTA), 3)
    between(40, 2, (MAGENTA, ROSE), 4)
    between(40, 3, (ROSE, PINK), 5)
    stamp(40, 4, (WHITE, PINK))
    at(41, 1, valve=3, candelabras=2, lights=(MAGENTA, ROSE), peacock=3, spout=3)
    at(41, 2, valve=4, lights=(ROSE, PINK), peacock=4)
    at(41, 3, valve=5, candelabras=5, bazookas=5, spout=5, peacock=5, peacock_a=AMBER,
       lights=(CREAM, WHITE))
    at(41, 4, ring1=3, ring2=3, candelabras=3, bazookas=3, peacock=3, lights=(AMBER, ROSE))
    at(41, 4.5, valve=2, candelabras=0, bazookas=0, spout=0, peacock=0)


# --- Collapse: runs, blows and black silences -----------------------------------------------------


def run(bar, spot, tail, from_right=False):
    """A comet crosses the low water, an eighth a module."""
    order = range(7, 0, -1) if from_right else range(1, 8)
    first, second = order[:2]
    at(bar, modules={first: tail, second: spot})
    for step in range(1, 6):
        at(bar, 1 + step / 2, shift=LEFT if from_right else RIGHT,
           ring5=2 + step // 2 + (step == 5), ring3=2 + step // 3)
    at(bar, 4, lights=spot, ring3=4, ring4=3, ring5=5, candelabras=2)


def blow(bar, beat, lights, until, **more):
    """Everything at once, then nothing."""
    at(bar, beat, valve=5, candelabras=5, bazookas=5, spout=5, lights=lights, **more)
    at(*until, reset=True, whites=CROSS)


def collapse():
    at(42, reset=True, display=6, ring1=3, ring3=2, ring5=2)
    run(42, ORANGE, RED)
    blow(43, 1, (ORANGE, AMBER), until=(43, 2.25))
    blow(43, 3, (RED, ORANGE), until=(43, 4.25))
    at(44, ring1=3, ring3=2, ring5=2)
    run(44, PINK, BLUE, from_right=True)
    blow(45, 1, (PINK, SKY), until=(45, 2.25))
    blow(45, 3, (SKY, WHITE), until=(45, 4.25))

    # The last run does not get away: it climbs to the cadence.
    at(46, ring1=3, ring2=2, ring5=2, modules={4: RED})
    for step, (spread, level) in enumerate(((1, 2), (2, 3), (3, 4)), start=2):
        at(46, step, modules={4 - spread: RED, 4 + spread: RED}, ring2=level, ring3=level - 1,
           ring5=level)
    at(46, 4, lights=(ORANGE, RED), ring2=4, ring3=4, ring5=4)
    at(47, lights=(AMBER, ORANGE), valve=(4, 3), candelabras=2, bazookas=2, spout=2)
    at(47, 2, lights=(CREAM, AMBER), valve=4, candelabras=3, bazookas=3, spout=3)
    at(47, 3, lights=(PEACH, WHITE), valve=5, candelabras=5, bazookas=5, spout=5)
    at(47, 4, ring1=3, ring2=4, candelabras=3, bazookas=4)

    at(48, 1, valve=(5, 1), candelabras=(5, 0), bazookas=5, spout=0, lights=(WHITE, RED))
    blow(48, 2, (PEACH, WHITE), until=(48, 3.25), back=5, curtain=AMBER_LAMPS)
    at(49, 1, valve=(1, 5), candelabras=(0, 5), bazookas=5, lights=(RED, WHITE))
    blow(49, 2, (WHITE, PEACH), until=(49, 3.25), back=5, curtain=AMBER_LAMPS)


def final_chord():
    # The roll: from the embers upward, ring by ring.
    at(50, reset=True, whites=CROSS, display=7, ring1=1, lights=EMBER, timer=4)
    at(50, 1.5, ring2=1)
    at(50, 2, ring3=1, ring1=2, lights=(RED, EMBER))
    at(50, 2.5, ring4=1)
    at(50, 3, ring5=2, ring2=2, lights=(EMBER, RED))
    at(50, 3.5, ring3=2)
    at(50, 4, sweeps=3, pulse=UP, lights=RED)
    at(50, 4.5, ring4=2, ring1=3)
    # The brass pull the curtains up; the front one hides what grows behind it.
    at(51, back=1, curtain=AMBER_LAMPS, ring5=3, ring2=3, lights=(RED, ORANGE), bazookas=1)
    at(51, 1.5, ring3=3, spout=1)
    at(51, 2, back=2, ring4=3, lights=(ORANGE, RED), bazookas=2, candelabras=1)
    at(51, 2.5, ring5=4, spout=2, front=1)
    at(51, 3, back=3, ring3=4, ring2=4, lights=ORANGE, bazookas=3, candelabras=2)
    at(51, 3.5, front=2, spout=3, ring4=4)
    at(51, 4, back=4, front=3, lights=(AMBER, ORANGE), bazookas=4, candelabras=3, spout=4)
    at(51, 4.5, front=5, lights=AMBER, candelabras=4, pulse=STOP, sweeps=4)

    at(52, valve=5, candelabras=5, bazookas=5, spout=5, front=1, back=5, voice=True,
       whites=CROSS | BAZOOKAS | MODULES, curtain=GREEN_LAMPS | AMBER_LAMPS, lights=(WHITE, PEACH))
    at(52, 1.5, motion=swing(2, long=True, opposed=True), front=0)
    at(52, 2, lights=(CREAM, PEACH))
    # The back curtain makes room for the peacock.
    at(52, 2.5, back=3)
    at(52, 2.75, back=0, curtain=0, peacock=5, peacock_a=ORANGE)
    at(52, 3, lights=(PEACH, CREAM))
    at(52, 3.5, peacock_b=AMBER)
    at(52, 4, lights=(CREAM, WHITE))

    # It rings out: all sinks into the embers.
    show.cue(90100, lights=(AMBER, PEACH), candelabras=4, bazookas=4, peacock=4, valve=4)
    show.cue(90400, lights=(ORANGE, AMBER), spout=3, bazookas=3, candelabras=3, peacock=3,
             motion=STOP)
    show.cue(90600, lights=ORANGE, valve=3, candelabras=2, bazookas=2, peacock=2, spout=2)
    show.cue(90800, lights=(RED, ORANGE), valve=2, candelabras=1, bazookas=1, peacock=1,
             peacock_a=RED, spout=1, voice=False)
    show.cue(91000, lights=RED, valve=1, candelabras=0, bazookas=0, peacock=0, spout=0)
    show.cue(91300, lights=EMBER, sweeps=0, ring5=0, ring4=0, ring3=0)
    show.cue(91600, valve=0, lights=0)
    show.cue(92300, reset=True, display=0)


def main():
    for section in (the_hall, footsteps, sprites, chase, tutti, collapse, final_chord):
        section()
    show.write(SAMPLES / "mountain_hall.ctl")


if __name__ == "__main__":
    main()
