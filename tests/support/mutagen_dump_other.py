# Prints the APE, ID3v1, ASF or Vorbis comment tags of a file as mutagen reads them, as JSON.
import sys, json, mutagen
from mutagen.apev2 import APEv2
from mutagen.id3._id3v1 import ParseID3v1
kind, path = sys.argv[1], sys.argv[2]
out = {}
if kind == "ape":
    for k, v in APEv2(path).items():
        out[k] = str(v)
elif kind == "v1":
    data = open(path, "rb").read()[-128:]
    for k, v in ParseID3v1(data).items():
        out[k] = str(v.text[0]) if hasattr(v, "text") else str(v)
elif kind == "asf":
    f = mutagen.File(path)
    for k, v in f.tags.items():
        out[k] = [str(x.value) for x in v]
else:
    f = mutagen.File(path)
    for k, v in f.tags.items():
        out[k.upper()] = list(v) if isinstance(v, list) else [v]
print(json.dumps(out))
