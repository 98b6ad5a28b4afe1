"""The beats of a recording, read from the table that music/make.sh writes."""


class Score:
    """Times in milliseconds of the bars and beats of a recording."""

    def __init__(self, path):
        self.length = 0
        self._beats = {}
        with open(path, encoding="utf-8") as table:
            for line in table:
                if line.startswith("#"):
                    continue
                time, kind, bar, beat = line.split("\t")[:4]
                if kind == "end":
                    self.length = int(time)
                self._beats[int(bar), int(beat)] = int(time)

    def at(self, bar, beat=1.0):
        """The time of a beat, counted from 1; beat 2.5 lies half-way between beats 2 and 3."""
        whole = int(beat)
        start = self._beat(bar, whole)
        return start + (beat - whole) * (self._beat(bar, whole + 1) - start)

    def _beat(self, bar, beat):
        return self._beats[(bar, beat) if beat <= 4 else (bar + 1, beat - 4)]
