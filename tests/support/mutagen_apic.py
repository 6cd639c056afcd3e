# Prints the APIC frames of an ID3v2 tag as mutagen sees them, in tag order: type,
# mime, description, byte count and SHA-1 of the picture data.
import sys, json, hashlib
from mutagen.id3 import ID3
t = ID3()
t.load(sys.argv[1], translate=False, load_v1=False)
out = []
for f in t.getall("APIC"):
    out.append({"type": int(f.type), "mime": f.mime, "desc": f.desc, "size": len(f.data),
                "sha1": hashlib.sha1(f.data).hexdigest()})
print(json.dumps(out))
