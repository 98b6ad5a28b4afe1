"""Writes a fountain show from cues.

A cue says how the fountain shall look from a time on, as in
`show.cue(19800, ring3=2, lights=(RED, BLUE))`. Cues may be given in any order; those of one time
add up. The show keeps track of what the fountain does and writes only what changes, in the form in
which the editor itself stores a time: every device and group at most once, the reset or the copy
first, the lights behind the water, the motion last.

What a cue can say (a pair is for Groups A and B, one value for both):

    reset=True                      everything off, before the rest of the cue
    display                         0..255, the number on the operator's display
    copy                            sum of WATER, LIGHTS and TO_B, TO_A (both exchange)
    valve                           0..5 or WEDDING_CAKE, or a pair: all rings and the sweeps
    ring1 .. ring5, sweeps,         0..5, a pair, or `Joined(a, b)`: both groups then rise to the
      candelabras                     mean of the two
    bazookas, spout, front, back,   0..5; the peacock and the curtains never stand up together
      peacock
    voice                           True or False
    whites                          sum of CROSS, BAZOOKAS and MODULES
    lights                          a light value or a pair
    modules                         {module: light value}
    curtain                         0, GREEN_LAMPS, AMBER_LAMPS or both
    peacock_a, peacock_b            light value of red, blue and amber
    shift                           LEFT or RIGHT, once; `timed(...)`; or STOP
    timer                           tenths of a second between two timed shifts
    motion                          `swing(...)` or STOP
    pulse                           UP, DOWN or STOP, or a pair of UP, DOWN and None
"""

from collections import namedtuple

GRID = 100  # ms between two times of a control file
MOST_COMMANDS = 11  # that the fountain's controller takes at one time
LATENESS = 25  # ms after its time at which a cue is seen on the average

RED, BLUE, AMBER, WHITE = 1, 2, 4, 8
MAGENTA, ORANGE, GREEN = RED | BLUE, RED | AMBER, BLUE | AMBER
EMBER = RED | BLUE | AMBER
ROSE, SKY, CREAM = RED | WHITE, BLUE | WHITE, AMBER | WHITE
PINK, PEACH, MINT = MAGENTA | WHITE, ORANGE | WHITE, GREEN | WHITE
RUST = EMBER | WHITE

WEDDING_CAKE = 6
CROSS, BAZOOKAS, MODULES = 2, 4, 8
GREEN_LAMPS, AMBER_LAMPS = 16, 32
WATER, LIGHTS, TO_B, TO_A = 1, 2, 16, 32
EXCHANGE = TO_A | TO_B
STOP, UP, DOWN = "stop", "up", "down"
RIGHT, LEFT = 1 | 16, 2 | 16

GROUP_BITS = (16, 32)
JOIN_BIT = 64
DEFAULT_TIMER = 4
RINGS = {f"ring{number}": number for number in range(1, 6)}
JOINABLE = {**RINGS, "sweeps": 6, "candelabras": 8}

Joined = namedtuple("Joined", "a b")


def timed(direction, wrap):
    """Light movement that repeats, with or without coming back in at the other end."""
    return direction & 3 | (32 if wrap else 16) | 64


def swing(speed, long=False, opposed=False):
    """Sweep motion; `speed` 1 slow .. 3 fast."""
    return 34 if opposed else 33, speed * 32 + (3 if long else 1)


def pair(value):
    return tuple(value) if isinstance(value, tuple) else (value, value)


def on_grid(time):
    """The time of the control file that is seen nearest to `time`."""
    return max(0, round((time - LATENESS) / GRID)) * GRID


class Fountain:
    """What the fountain does; None where a timed effect has its own way."""

    def __init__(self, display=None):
        self.display = display
        self.level = {name: (0, 0) for name in JOINABLE}
        self.joined = dict.fromkeys(JOINABLE, False)
        self.single = dict.fromkeys(
            ("bazookas", "spout", "front", "back", "peacock", "voice", "whites", "curtain",
             "peacock_a", "peacock_b"), 0)
        self.peacock_shown = 0
        self.group_lights = [0, 0]
        self.modules = dict.fromkeys(range(1, 8), 0)
        self.moving = False
        self.pulsing = False
        self.motion = None
        self.timer = DEFAULT_TIMER
        self.timer_set = False


class Encoder:
    """Turns the cue of one time into commands, and the fountain into what they make of it."""

    def __init__(self, fountain, cue):
        self.fountain = fountain
        self.cue = cue
        self.commands = []

    def encode(self):
        if self.cue.get("reset"):
            self.fountain = Fountain(self.fountain.display)
            self.emit(99, 0)
        self.encode_copy()
        self.encode_display()
        self.encode_valve()
        for name, address in JOINABLE.items():
            if name in self.cue:
                self.encode_joinable(name, address)
        self.encode_single_water()
        self.encode_whites()
        self.encode_lights()
        self.encode_lamps()
        self.encode_light_movement()
        self.encode_sweep_movement()
        return self.commands

    def emit(self, address, data):
        self.commands.append((address, data))

    def emit_groups(self, address, wanted, changed):
        """One command for both groups where they get the same, else one for each that changes."""
        if all(changed) and wanted[0] == wanted[1]:
            self.emit(address, wanted[0] + sum(GROUP_BITS))
            return
        for group in (0, 1):
            if changed[group]:
                self.emit(address, wanted[group] + GROUP_BITS[group])

    def changes(self, name):
        """Takes over a setting that exists once; true when it was different."""
        if name not in self.cue or self.cue[name] == self.fountain.single[name]:
            return False
        self.fountain.single[name] = self.cue[name]
        return True

    def encode_copy(self):
        data = self.cue.get("copy")
        if not data:
            return
        if self.commands or self.fountain.moving:
            raise ValueError("a copy cannot stand with a reset or moving lights")
        self.emit(80, data)
        sources = {TO_B: (0, 0), TO_A: (1, 1), EXCHANGE: (1, 0)}[data & EXCHANGE]
        if data & WATER:
            for name, level in self.fountain.level.items():
                self.fountain.level[name] = tuple(level[source] for source in sources)
        if data & LIGHTS:
            old = list(self.fountain.group_lights)
            for group, source in enumerate(sources):
                if group != source:
                    self.set_group_lights(group, old[source])

    def encode_display(self):
        if self.cue.get("display", self.fountain.display) != self.fountain.display:
            self.fountain.display = self.cue["display"]
            self.emit(0, self.fountain.display)

    def encode_valve(self):
        if "valve" not in self.cue:
            return
        wanted = pair(self.cue["valve"])
        changed = [False, False]
        for name in (*RINGS, "sweeps"):
            target = tuple(self.valve_level(name, level) for level in wanted)
            level = self.fountain.level[name]
            merged = list(level)
            for group in (0, 1):
                if wanted[group] is not None and level[group] != target[group]:
                    changed[group] = True
                    merged[group] = target[group]
            self.fountain.level[name] = tuple(merged)
        self.emit_groups(48, wanted, changed)
        if self.fountain.pulsing:
            self.fountain.level["sweeps"] = (None, None)

    @staticmethod
    def valve_level(name, level):
        if level != WEDDING_CAKE:
            return level
        return RINGS.get(name, 5)

    def encode_joinable(self, name, address):
        wish = self.cue[name]
        join = isinstance(wish, Joined)
        level = self.fountain.level[name]
        wanted = tuple(new if new is not None else old for new, old in zip(pair(wish), level))
        rejoined = join != self.fountain.joined[name]
        changed = [rejoined or new != old for new, old in zip(wanted, level)]
        bit = JOIN_BIT if join else 0
        self.emit_groups(address, tuple(new + bit for new in wanted), changed)
        self.fountain.level[name] = wanted
        self.fountain.joined[name] = join
        if name == "sweeps" and self.fountain.pulsing:
            self.fountain.level[name] = (None, None)

    def encode_single_water(self):
        single = self.fountain.single
        if self.cue.get("peacock"):
            if self.cue.get("front", single["front"]) or self.cue.get("back", single["back"]):
                raise ValueError("the peacock fights with the curtains")
        elif (self.cue.get("front") or self.cue.get("back")) and single["peacock"]:
            single["peacock"] = 0  # a curtain that rises takes the peacock down
        for address, names in ((9, ("front", "back")), (7, ("bazookas", "spout"))):
            changed = [self.changes(name) for name in names]
            self.emit_groups(address, tuple(single[name] for name in names), changed)
            if address == 9 and self.changes("peacock"):
                self.emit(9, 96 + single["peacock"])
        if self.changes("voice"):
            self.emit(54, int(single["voice"]))

    def encode_whites(self):
        if not self.changes("whites"):
            return
        whites = self.fountain.single["whites"]
        self.emit(16, whites)
        for module, value in self.fountain.modules.items():
            if value is not None:
                self.fountain.modules[module] = value & EMBER | whites & MODULES

    def set_group_lights(self, group, value):
        self.fountain.group_lights[group] = value
        for module in range(group + 1, 8, 2):
            self.fountain.modules[module] = value

    def encode_lights(self):
        fountain = self.fountain
        if "lights" in self.cue:
            wanted = pair(self.cue["lights"])
            changed = [wanted[group] is not None and
                       any(value != wanted[group] for value in
                           [fountain.group_lights[group],
                            *(fountain.modules[m] for m in range(group + 1, 8, 2))])
                       for group in (0, 1)]
            if all(changed) and wanted[0] == wanted[1]:
                self.emit(51, wanted[0])
            else:
                for group in (0, 1):
                    if changed[group]:
                        self.emit(49 + group, wanted[group])
            for group in (0, 1):
                if changed[group]:
                    self.set_group_lights(group, wanted[group])
        for module, value in sorted(self.cue.get("modules", {}).items()):
            if fountain.modules[module] != value:
                fountain.modules[module] = value
                self.emit(16 + module, value)

    def encode_lamps(self):
        if self.changes("curtain"):
            self.emit(24, self.fountain.single["curtain"])
        # The picture shows the last light command to either group of the peacock.
        for name, address in (("peacock_a", 25), ("peacock_b", 26)):
            value = self.cue.get(name, self.fountain.peacock_shown)
            if self.changes(name) or value != self.fountain.peacock_shown:
                self.fountain.peacock_shown = value
                self.emit(address, value)

    def encode_light_movement(self):
        fountain = self.fountain
        timer = self.cue.get("timer", fountain.timer)
        if timer != fountain.timer:
            if timer < DEFAULT_TIMER and not fountain.timer_set:
                raise ValueError("a fast light timer must be slow first, or the editor drops it")
            fountain.timer = timer
            fountain.timer_set = True
            self.emit(86, timer)
        wish = self.cue.get("shift")
        if wish == STOP:
            if fountain.moving:
                self.emit(85, 0)
            fountain.moving = False
        elif wish:
            self.emit(85, wish)
            fountain.moving = bool(wish & 64)
            self.shift_modules(right=bool(wish & 1))
        if fountain.moving:
            fountain.modules = dict.fromkeys(fountain.modules)

    def shift_modules(self, right):
        old = self.fountain.modules
        step = -1 if right else 1
        self.fountain.modules = {module: old.get(module + step, 0) for module in old}

    def encode_sweep_movement(self):
        fountain = self.fountain
        motion = self.cue.get("motion")
        if motion == STOP:
            if fountain.motion:
                self.emit(fountain.motion[0], 0)
            fountain.motion = None
        elif motion and motion != fountain.motion:
            fountain.motion = motion
            self.emit(*motion)
        pulse = self.cue.get("pulse")
        if pulse == STOP:
            if fountain.pulsing:
                self.emit(69, 0)
            fountain.pulsing = False
        elif pulse:
            wanted = pair(pulse)
            self.emit_groups(69, tuple(64 if way == DOWN else 0 for way in wanted),
                             [way is not None for way in wanted])
            fountain.pulsing = True
            fountain.level["sweeps"] = (None, None)


class Show:
    def __init__(self):
        self._cues = {}

    def cue(self, time, **wishes):
        """Adds to what shall be seen from `time` (ms) on; the last word on a device counts."""
        there = self._cues.setdefault(on_grid(time), {})
        if "modules" in wishes and "modules" in there:
            wishes["modules"] = {**there["modules"], **wishes["modules"]}
        there.update(wishes)

    def lines(self):
        yield "ct0-381"
        fountain = Fountain()
        for time, cue in sorted(self._cues.items()):
            encoder = Encoder(fountain, cue)
            try:
                commands = encoder.encode()
            except ValueError as error:
                raise ValueError(f"{time} ms: {error}") from error
            fountain = encoder.fountain
            if len(commands) > MOST_COMMANDS:
                raise ValueError(f"{time} ms: {len(commands)} commands: {commands}")
            if commands:
                yield time_text(time) + " ".join(f"{a:03}-{d:03}" for a, d in commands)

    def write(self, path):
        text = "".join(line + "\r\n" for line in self.lines())
        with open(path, "w", encoding="ascii", newline="") as file:
            file.write(text)


def time_text(time):
    return f"{time // 60000:02}:{time % 60000 / 1000:04.1f}"
