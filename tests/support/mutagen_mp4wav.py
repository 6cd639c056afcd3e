# MP4 and WAV files for the engine, and what an independent reader sees in them, as JSON.
#   mp4write PATH  - items of every kind with mutagen, the ones the engine maps and others
#   mp4dump PATH   - every item (values as text, binary as hex) and the top-level atoms
#   wavwrite PATH  - an "id3 " chunk with mutagen, an INFO list and a chunk of our own
#   wavdump PATH   - the ID3 frames as mutagen reads them, the INFO fields and every chunk
import sys, json, struct, hashlib
import mutagen
from mutagen.mp4 import MP4, MP4Cover, MP4FreeForm
from mutagen.wave import WAVE
from mutagen.id3 import TIT2, TPE1, TALB, COMM, TXXX, APIC, TCOM

kind, path = sys.argv[1], sys.argv[2]
U = "Grüße ✓ 日本"


def top_atoms(data):
    out, pos = [], 0
    while pos + 8 <= len(data):
        size, name = struct.unpack(">I4s", data[pos:pos + 8])
        if size < 8:
            break
        body = data[pos + 8:pos + size]
        out.append([name.decode("latin-1"), hashlib.sha1(body).hexdigest() if name == b"mdat" else size])
        pos += size
    return out


def chunks(data):
    out, pos = [], 12
    while pos + 8 <= len(data):
        name, size = struct.unpack("<4sI", data[pos:pos + 8])
        out.append((name.decode("latin-1"), data[pos + 8:pos + 8 + size]))
        pos += 8 + size + (size & 1)
    return out


def value(v):
    if isinstance(v, MP4Cover):
        return "cover %d %s" % (v.imageformat, hashlib.sha1(bytes(v)).hexdigest())
    if isinstance(v, MP4FreeForm):
        return "freeform %d %s" % (v.dataformat, bytes(v).hex())
    if isinstance(v, bytes):
        return v.hex()
    if isinstance(v, tuple):
        return list(v)
    return v


if kind == "mp4write":
    f = MP4(path)
    t = f.tags
    t["\xa9nam"] = ["Titel " + U]
    t["\xa9ART"] = ["Künstler " + U]
    t["\xa9alb"] = ["Album " + U]
    t["\xa9gen"] = ["Genre " + U]
    t["\xa9day"] = ["1987"]
    t["trkn"] = [(4, 9)]
    t["disk"] = [(1, 2)]
    t["\xa9cmt"] = ["Kommentar " + U]
    t["desc"] = ["Beschreibung " + U]
    t["aART"] = ["Albuminterpret " + U]
    t["cprt"] = ["(c) " + U]
    t["\xa9wrt"] = ["Komponist " + U]
    t["\xa9grp"] = ["Gruppe " + U]
    # Items the engine does not map: they have to come through every save untouched.
    t["\xa9lyr"] = ["Liedtext " + U]
    t["soar"] = ["Sortiername " + U]
    t["tmpo"] = [120]
    t["cpil"] = True
    t["covr"] = [MP4Cover(b"\x89PNG" + b"p" * 300, imageformat=MP4Cover.FORMAT_PNG)]
    t["----:com.apple.iTunes:MusicBrainz Track Id"] = [MP4FreeForm(b"7d1c-42")]
    t["----:org.example:Stimmung"] = [MP4FreeForm(("ruhig " + U).encode("utf-8"))]
    f.save()
elif kind == "mp4dump":
    f = MP4(path)
    items = {k: [value(x) for x in v] if isinstance(v, list) else value(v) for k, v in f.tags.items()}
    print(json.dumps({"items": items, "atoms": top_atoms(open(path, "rb").read()),
                      "length": f.info.length > 0}, ensure_ascii=False))
elif kind == "wavwrite":
    data = bytearray(open(path, "rb").read())
    info = b"INFO"
    for cid, text in ((b"INAM", "Titel " + U), (b"IART", "Künstler " + U), (b"IPRD", "Album " + U),
                      (b"IGNR", "Jazz"), (b"ICRD", "1987"), (b"IPRT", "4"), (b"ICMT", "Kommentar " + U),
                      (b"IENG", "Toningenieur " + U), (b"ICOP", "(c) " + U), (b"IKEY", "Stichwort"),
                      (b"ISRC", "Quelle " + U)):
        raw = text.encode("utf-8") + b"\0"
        info += cid + struct.pack("<I", len(raw)) + raw + (b"\0" if len(raw) & 1 else b"")
    # Replace the LIST chunk of the fixture by ours and add a chunk no reader knows.
    out, pos = bytearray(data[:12]), 12
    while pos + 8 <= len(data):
        name, size = struct.unpack("<4sI", data[pos:pos + 8])
        if name != b"LIST":
            out += data[pos:pos + 8 + size + (size & 1)]
        pos += 8 + size + (size & 1)
    out += b"LIST" + struct.pack("<I", len(info)) + info
    own = b"Eigene Daten\x01\x02\x03"
    out += b"qlt1" + struct.pack("<I", len(own)) + own + (b"\0" if len(own) & 1 else b"")
    out[4:8] = struct.pack("<I", len(out) - 8)
    open(path, "wb").write(out)
    f = WAVE(path)
    f.add_tags()
    f.tags.add(TIT2(encoding=1, text="Titel " + U))
    f.tags.add(TPE1(encoding=1, text="Künstler " + U))
    f.tags.add(TALB(encoding=1, text="Album " + U))
    f.tags.add(TCOM(encoding=1, text="Komponist " + U))
    f.tags.add(COMM(encoding=1, lang="deu", desc="eins", text="Kommentar " + U))
    f.tags.add(TXXX(encoding=1, desc="QLT", text="QLT7"))
    f.tags.add(APIC(encoding=1, mime="image/png", type=3, desc="Bild", data=b"\x89PNG" + b"x" * 100))
    f.save(v2_version=3)
elif kind == "wavdump":
    raw = open(path, "rb").read()
    f = WAVE(path)
    frames = {}
    if f.tags is not None:
        for k, fr in f.tags.items():
            frames[k] = [str(x) for x in fr.text] if hasattr(fr, "text") else hashlib.sha1(fr.data).hexdigest()
    info, other = {}, []
    for name, body in chunks(raw):
        if name == "LIST" and body[:4] == b"INFO":
            pos = 4
            while pos + 8 <= len(body):
                cid, size = struct.unpack("<4sI", body[pos:pos + 8])
                info[cid.decode("latin-1")] = body[pos + 8:pos + 8 + size].rstrip(b"\0").decode("utf-8", "replace")
                pos += 8 + size + (size & 1)
        elif name.lower() != "id3 ":
            other.append([name, hashlib.sha1(body).hexdigest()])
    print(json.dumps({"frames": frames, "info": info, "chunks": other,
                      "version": f.tags.version[1] if f.tags is not None else 0,
                      "length": f.info.length > 0}, ensure_ascii=False))
