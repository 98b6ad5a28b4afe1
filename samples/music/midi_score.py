"""Reads a standard MIDI file: notes per channel and tick-to-time conversion."""

import struct
from collections import namedtuple

Note = namedtuple("Note", "start end channel pitch velocity")

BEATS_PER_BAR = 4


def _variable_length(data, pos):
    value = 0
    while True:
        byte = data[pos]
        pos += 1
        value = (value << 7) | (byte & 0x7F)
        if byte < 0x80:
            return value, pos


def _track_events(data):
    """Yields (tick, status, payload); meta events have status 0xFF and payload (type, bytes)."""
    pos, tick, status = 0, 0, 0
    while pos < len(data):
        delta, pos = _variable_length(data, pos)
        tick += delta
        if data[pos] >= 0x80:
            status = data[pos]
            pos += 1
        if status == 0xFF:
            kind = data[pos]
            length, pos = _variable_length(data, pos + 1)
            yield tick, status, (kind, data[pos:pos + length])
            pos += length
        elif status in (0xF0, 0xF7):
            length, pos = _variable_length(data, pos)
            pos += length
        else:
            length = 1 if status & 0xF0 in (0xC0, 0xD0) else 2
            yield tick, status, tuple(data[pos:pos + length])
            pos += length


def _chunks(data):
    pos = 0
    while pos + 8 <= len(data):
        kind, length = struct.unpack(">4sI", data[pos:pos + 8])
        yield kind, data[pos + 8:pos + 8 + length]
        pos += 8 + length


class Score:
    def __init__(self, path):
        self.notes = []
        self.unfinished = 0
        self._tempi = {0: 500000}
        with open(path, "rb") as file:
            for kind, body in _chunks(file.read()):
                if kind == b"MThd":
                    self.division = struct.unpack(">HHH", body[:6])[2]
                elif kind == b"MTrk":
                    self._read_track(body)
        self.notes.sort()

    def _read_track(self, body):
        sounding = {}
        for tick, status, payload in _track_events(body):
            if status == 0xFF:
                if payload[0] == 0x51:
                    self._tempi[tick] = int.from_bytes(payload[1], "big")
                continue
            channel, command = (status & 0x0F) + 1, status & 0xF0
            if command == 0x90 and payload[1] > 0:
                sounding.setdefault((channel, payload[0]), []).append((tick, payload[1]))
            elif command in (0x80, 0x90) and sounding.get((channel, payload[0])):
                start, velocity = sounding[(channel, payload[0])].pop(0)
                self.notes.append(Note(start, tick, channel, payload[0], velocity))
        self.unfinished += sum(len(left) for left in sounding.values())

    def milliseconds(self, tick):
        """Time of a tick from the start of the MIDI file, following every tempo change."""
        total, last, tempo = 0, 0, 500000
        for change, value in sorted(self._tempi.items()):
            if change >= tick:
                break
            total += (change - last) * tempo
            last, tempo = change, value
        return (total + (tick - last) * tempo) / self.division / 1000

    def tempo_at(self, tick):
        """Quarter notes per minute."""
        return 60e6 / self._tempi[max(change for change in self._tempi if change <= tick)]

    def tick_of(self, bar, beat=1):
        return round(((bar - 1) * BEATS_PER_BAR + beat - 1) * self.division)
