# Dumps the ID3v2 tag as mutagen sees it: version and every frame with its encoding.
import sys, json
from mutagen.id3 import ID3
t = ID3()
t.load(sys.argv[1], translate=False, load_v1=False)
frames = []
for f in t.values():
    d = {"id": f.FrameID, "encoding": int(getattr(f, "encoding", -1))}
    if hasattr(f, "text"):
        d["text"] = f.text if isinstance(f.text, str) else [str(x) for x in f.text]
    if hasattr(f, "desc"):
        d["desc"] = f.desc
    if hasattr(f, "lang"):
        d["lang"] = f.lang
    if hasattr(f, "url"):
        d["url"] = f.url
    if f.FrameID == "APIC":
        d["mime"] = f.mime
        d["type"] = int(f.type)
        d["size"] = len(f.data)
    frames.append(d)
print(json.dumps({"version": list(t.version), "frames": frames}))
