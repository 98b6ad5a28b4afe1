#!/bin/sh
# Renders mountain_hall.abc to ../mountain_hall.mp3 and writes beats.txt next to this script.
# KEEP=directory keeps the MIDI file and the uncompressed recordings.
# Debian: apt-get install abcmidi fluidsynth fluid-soundfont-gm sox libsox-fmt-mp3 lame python3
set -eu

cd "$(dirname "$0")"
name=mountain_hall
soundfont=${SOUNDFONT:-/usr/share/sounds/sf2/FluidR3_GM.sf2}
lead_in=0.4   # seconds of silence before bar 1
length=93.0   # seconds of the finished piece
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

abc2midi "$name.abc" -o "$work/$name.mid" > "$work/abc.log"
if grep -E 'Error|Warning' "$work/abc.log"; then
    echo "make.sh: the score has mistakes" >&2
    exit 1
fi

# The small period keeps notes on time: events take effect at period boundaries.
fluidsynth -q -n -i -g 0.15 -r 44100 -z 64 -O s24 -T wav -F "$work/raw.wav" \
    -o synth.reverb.active=1 -o synth.reverb.room-size=0.8 -o synth.reverb.damp=0.35 \
    -o synth.reverb.width=0.9 -o synth.reverb.level=0.75 \
    -o synth.chorus.active=0 -o synth.polyphony=512 \
    "$soundfont" "$work/$name.mid"

# The gentle compression lets the quiet opening be heard without flattening the tutti.
sox "$work/raw.wav" "$work/dry.wav" pad "$lead_in" trim 0 "$length" \
    highpass 30 equalizer 300 0.8q -1.5 treble +2.5 6000
sox "$work/dry.wav" -b 24 "$work/pressed.wav" gain -n -6 \
    compand 0.02,0.4 -70,-70,-40,-33,-22,-17,-6,-6,0,-4 0 -90 0.02
sox -R "$work/pressed.wav" -b 16 "$work/master.wav" fade t 0 "$length" 2.5 gain -n -0.6 dither -s

lame --quiet -b 160 -m j -q 2 --noreplaygain --tt "In the Hall of the Mountain King" \
    --ta "Edvard Grieg" --tc "Abridged transcription, CC0" "$work/master.wav" "../$name.mp3"
python3 beats.py "$name.abc" "$work/$name.mid" "$lead_in" "$length" > beats.txt
if [ -n "${KEEP:-}" ]; then
    cp "$work"/*.wav "$work"/*.mid "$KEEP"
fi
