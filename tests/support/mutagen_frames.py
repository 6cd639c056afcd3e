# Lists every frame of the ID3v2 tag as mutagen reads it, without converting a v2.3 tag
# to v2.4: one line per frame, "ID repr", frames mutagen does not know as raw bytes.
import sys
from mutagen.id3 import ID3
t = ID3()
t.load(sys.argv[1], translate=False, load_v1=False)
lines = []
for f in t.values():
    lines.append(f.FrameID + " " + repr(f))
for raw in getattr(t, "unknown_frames", []):
    lines.append("raw " + raw.hex())
print("version %d.%d" % (t.version[0], t.version[1]))
for line in sorted(lines):
    print(line)
