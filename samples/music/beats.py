"""Prints the times of sections, bars, beats and cues of a score as a tab-separated table.

usage: beats.py SCORE.abc SCORE.mid LEAD_IN_SECONDS LENGTH_SECONDS

The times are those of the finished recording, computed from the tempo map of the MIDI file. The
labels are the "% section BAR text" and "% cue BAR.BEAT text" comments of the score.
"""

import re
import sys

from midi_score import BEATS_PER_BAR, Score

SECTION = re.compile(r"% section (\d+)\s+(.*)")
CUE = re.compile(r"% cue (\d+)\.(\d+)\s+(.*)")


def read_labels(path):
    sections, cues = [], {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            if match := SECTION.match(line):
                sections.append((int(match[1]), match[2].strip()))
            elif match := CUE.match(line):
                cues[int(match[1]), int(match[2])] = match[3].strip()
    return sections, cues


def main():
    abc, midi, lead_in, length = sys.argv[1:]
    lead_ms, length_ms = float(lead_in) * 1000, float(length) * 1000
    score = Score(midi)
    sections, cues = read_labels(abc)
    if not sections or not cues:
        sys.exit("beats.py: the score has no section or no cue comments")

    def row(kind, bar, beat, label):
        tick = score.tick_of(bar, beat)
        time = round(score.milliseconds(tick) + lead_ms)
        if time < length_ms:
            print(time, kind, bar, beat, round(score.tempo_at(tick)), label, sep="\t")

    print("# time_ms\tkind\tbar\tbeat\tquarters_per_minute\tlabel")
    print("# A beat without an event has the label \"-\"; times are milliseconds of the recording.")
    print(f"# length_ms {round(length_ms)} lead_in_ms {round(lead_ms)}")
    starts = dict(sections)
    last_bar = max(bar for bar, _ in cues)
    for bar in range(1, last_bar + 1):
        if bar in starts:
            row("section", bar, 1, starts[bar])
        for beat in range(1, BEATS_PER_BAR + 1):
            row("bar" if beat == 1 else "beat", bar, beat, cues.get((bar, beat), "-"))
    print(round(length_ms), "end", last_bar + 1, 1, 0, "end of the recording", sep="\t")


if __name__ == "__main__":
    main()
