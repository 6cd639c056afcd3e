# Writes tags with mutagen into a file, for the engine to read: id3v23, id3v24, ape, asf, xiph.
import sys
import mutagen
from mutagen.id3 import (ID3, TIT2, TPE1, TALB, TCON, TDRC, TYER, TRCK, TCOM, TPE3, TPE2, TOPE, TCOP, TENC,
                         WPUB, WOAF, COMM, USLT, TXXX, APIC)
from mutagen.apev2 import APEv2
kind, path = sys.argv[1], sys.argv[2]
U = "Grüße ✓ 日本"
if kind in ("id3v23", "id3v24"):
    v = 3 if kind == "id3v23" else 4
    enc = 1 if v == 3 else 3
    t = ID3()
    t.add(TIT2(encoding=enc, text="Titel " + U))
    t.add(TPE1(encoding=enc, text="Künstler " + U))
    t.add(TALB(encoding=enc, text="Album " + U))
    t.add(TCON(encoding=enc, text="Jazz"))
    t.add(TYER(encoding=0, text="1987") if v == 3 else TDRC(encoding=0, text="1987"))
    t.add(TRCK(encoding=0, text="4/9"))
    t.add(TCOM(encoding=enc, text="Komponist " + U))
    t.add(TPE3(encoding=enc, text="Dirigent " + U))
    t.add(TPE2(encoding=enc, text="Orchester " + U))
    t.add(TOPE(encoding=enc, text="Original " + U))
    t.add(TCOP(encoding=enc, text="(c) " + U))
    t.add(TENC(encoding=enc, text="Encoder " + U))
    t.add(WPUB(url="http://publisher.example/"))
    t.add(WOAF(url="http://file.example/x.mp3"))
    t.add(COMM(encoding=enc, lang="deu", desc="eins", text="Kommentar " + U))
    t.add(COMM(encoding=enc, lang="eng", desc="zwei", text="Comment two"))
    t.add(USLT(encoding=enc, lang="eng", desc="lrc", text="[00:01.00]Zeile " + U))
    t.add(TXXX(encoding=enc, desc="QLT", text="QLT7"))
    t.add(TXXX(encoding=enc, desc="MOD", text="MOODruhig " + U))
    t.add(APIC(encoding=enc, mime="image/png", type=3, desc="Bild " + U, data=b"\x89PNG" + b"x" * 100))
    t.save(path, v2_version=v)
elif kind == "ape":
    t = APEv2()
    for k in ("Title", "Artist", "Album", "Year", "Track", "Genre", "Comment", "Copyright"):
        t[k] = k + " " + U
    t.save(path)
elif kind == "asf":
    f = mutagen.File(path)
    f["Title"] = "Titel " + U
    f["Author"] = "Künstler " + U
    f["WM/AlbumTitle"] = "Album " + U
    f["WM/Genre"] = "Genre " + U
    f["WM/Year"] = "1999"
    f["WM/TrackNumber"] = "5"
    f["WM/Composer"] = "Komponist " + U
    f["WM/Mood"] = "Stimmung " + U
    f.save()
else:
    f = mutagen.File(path)
    for k in ("TITLE", "ARTIST", "ALBUM", "GENRE", "DATE", "TRACKNUMBER", "COMMENT", "DESCRIPTION", "PERFORMER",
              "COPYRIGHT", "CONTACT", "LICENSE", "LOCATION", "VENDOR"):
        f[k] = k + " " + U
    f.save()
