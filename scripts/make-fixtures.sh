#!/usr/bin/env bash
# Makes the small audio files under tests/fixtures that the tag engine tests start from.
# Needs ffmpeg and python3; the tests themselves only need the committed files.
#   scripts/make-fixtures.sh [output folder]
set -euo pipefail
out="${1:-$(cd "$(dirname "$0")/.." && pwd)/tests/fixtures}"
mkdir -p "$out"
cd "$out"

ff() { ffmpeg -hide_banner -loglevel error -y -fflags +bitexact "$@"; }
tone() { echo -f lavfi -i "sine=frequency=440:duration=0.5:sample_rate=$1"; }

# Half a second of a 440 Hz tone in every format ffmpeg can write, without any tag.
ff $(tone 44100) -ac 1 -c:a libmp3lame -b:a 64k -map_metadata -1 -id3v2_version 0 -write_id3v1 0 \
   -flags +bitexact tone.mp3
ff $(tone 44100) -ac 1 -c:a flac -map_metadata -1 -flags +bitexact tone.flac
ff $(tone 44100) -ac 1 -c:a libvorbis -q:a 0 -map_metadata -1 -flags +bitexact tone.ogg
ff $(tone 48000) -ac 1 -c:a libopus -b:a 24k -map_metadata -1 -flags +bitexact -f ogg tone-opus.oga
ff $(tone 8000) -ac 1 -c:a pcm_s16le -map_metadata -1 -flags +bitexact tone.wav
ff $(tone 22050) -ac 1 -c:a aac -b:a 32k -map_metadata -1 -flags +bitexact -f adts tone.aac
ff $(tone 22050) -ac 1 -c:a aac -b:a 32k -map_metadata -1 -flags +bitexact tone.m4a
ff $(tone 22050) -ac 1 -c:a wmav2 -b:a 32k -map_metadata -1 -flags +bitexact tone.wma

# A small picture for the picture tests.
ff -f lavfi -i color=c=red:s=16x16 -frames:v 1 -flags +bitexact cover.jpg

# Monkey's Audio and Musepack have no free encoder: minimal files with valid headers and a
# few bytes of (meaningless) frame data, which is all a tag editor reads.
/usr/bin/python3 - <<'PY'
import random, struct
rnd = random.Random(7)
# Monkey's Audio 3.99: descriptor (52 bytes), header (24 bytes), seek table, frame data.
frame = bytes(rnd.randrange(256) for _ in range(1500))
desc = b"MAC " + struct.pack("<HHIIIIIII", 3990, 0, 52, 24, 4, 0, len(frame), 0, 0) + bytes(16)
head = struct.pack("<HHIIIHHI", 2000, 0, 73728, 22050, 1, 16, 1, 44100)
open("tone.ape", "wb").write(desc + head + struct.pack("<I", 80) + frame)
# Musepack SV7: "MP+", version 7, 20 frames of 1152 samples at 44.1 kHz, flags 0.
hdr = b"MP+\x17" + struct.pack("<I", 20) + bytes(48)
open("tone.mpc", "wb").write(hdr + bytes(rnd.randrange(256) for _ in range(2000)))
PY
ls -l "$out"
