#include "picture/modEmbeddedPictures.h"

#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "file/modFileCommands.h"
#include "list/ftcNames.h"
#include "list/ftcReadPool.h"
#include "picture/PictureColumns.h"
#include "tag/TagEngine.h"

#include <QRegularExpression>

namespace {

const QLatin1String kLinkMark("-->");

QString Index00(int i) {
    return QStringLiteral("%1").arg(i, 2, 10, QLatin1Char('0'));
}

int NextKey(const DataGrid& list) {
    return list.Rows() + 1;
}

} // namespace

bool IsPictureLinkMime(const QString& mime) {
    return mime.startsWith(kLinkMark);
}

QString PictureLinkMime(const QString& picturePath) {
    return kLinkMark + picturePath;
}

QString PictureLinkPath(const QString& mime) {
    return IsPictureLinkMime(mime) ? mime.mid(3) : QString();
}

// The published ID3v2 list of picture types, for a settings list that holds no name.
const char* const kTypeNames[] = {"Other",
                                  "32x32 pixels file icon (PNG only)",
                                  "Other file icon",
                                  "Cover (front)",
                                  "Cover (back)",
                                  "Leaflet page",
                                  "Media (e.g. label side of CD)",
                                  "Lead artist/lead performer/soloist",
                                  "Artist/performer",
                                  "Conductor",
                                  "Band/Orchestra",
                                  "Composer",
                                  "Lyricist/text writer",
                                  "Recording location",
                                  "During recording",
                                  "During performance",
                                  "Movie/video screen capture",
                                  "A bright coloured fish",
                                  "Illustration",
                                  "Band/artist logotype",
                                  "Publisher/studio logotype"};

int PictureTypeCount() {
    return int(sizeof kTypeNames / sizeof kTypeNames[0]);
}

QString PictureTypeName(int type) {
    if (type < 0 || type >= PictureTypeCount())
        return QString();
    // A name the user gave stands; the published (English) name is shown in the
    // program's language.
    const QString published = QString::fromLatin1(kTypeNames[type]);
    const QString name = Setting(Ini::PictureTypeFirst + type, Ini::PictureTypeCol);
    if (!name.isEmpty() && name != published)
        return name;
    const QString translated =
        Caption(type < 15 ? CapPictureTypeName0 + type : CapPictureTypeName15 + type - 15);
    return translated.isEmpty() ? published : translated;
}

QString PictureMimeForFile(const QString& picturePath) {
    QString folder, name, base, ext;
    SplitPath(picturePath, folder, name);
    SplitExtension(name, base, ext);
    ext = ext.toLower();
    if (ext == u"jpg")
        ext = QStringLiteral("jpeg");
    return QStringLiteral("image/") + ext;
}

QString PictureExtensionOfMime(const QString& mime) {
    return mime.section(u'/', 1);
}

QString EmbeddedPictureFileName(const QString& songBase, int i, const QString& description,
                                const QString& mime) {
    QString format = description.section(u'/', 1);
    if (format.isEmpty())
        format = mime.section(u'/', 1);
    // a format is a short word; anything else (a path, a sentence) names none
    static const QRegularExpression word(QStringLiteral("^[A-Za-z0-9+.-]{1,10}$"));
    if (!word.match(format).hasMatch())
        format = QStringLiteral("jpg");
    format = format.toLower();
    if (format == u"jpeg")
        format = QStringLiteral("jpg");
    return songBase + u'_' + Index00(i) + u'.' + format;
}

void DefineEmbeddedPictureColumns(DataGrid& list) {
    if (list.Cols() > 0)
        return;
    list.AddColumn(QStringLiteral("HasPic"), QString(), 600, Align::Center);
    list.AddColumn(QStringLiteral("HasPicLink"), QString(), 600, Align::Center);
    list.AddColumn(QStringLiteral("Filename"), QString(), 3600);
    list.AddColumn(QStringLiteral("Description"), QString(), 2400);
    list.AddColumn(QStringLiteral("PicType"), QString(), 2000);
    list.AddColumn(QStringLiteral("Mime_Link"), QString(), 2400);
    list.AddColumn(QStringLiteral("Path"), QString(), 4000);
}

void SetEmbeddedPictureCaptions(DataGrid& list) {
    const CaptionRow rows[IPicCol::Count] = {CapHeaderEmbedded,    CapHeaderLinked,      CapHeaderSong,
                                             CapHeaderDescription, CapPictureTypeHeader, CapHeaderMimeLink,
                                             CapHeaderPath};
    for (int c = 1; c <= IPicCol::Count && c <= list.Cols(); ++c)
        list.SetColumnCaption(c, Caption(rows[c - 1]));
}

QStringList PictureTypeNames() {
    QStringList names;
    for (int t = 0; t < PictureTypeCount(); ++t)
        names << PictureTypeName(t);
    return names;
}

void EmbeddedPictureCells(const TagEngine& engine, const QString& folder, const QString& name,
                          bool withPicturesOnly, const QStringList& typeNames,
                          std::vector<QStringList>& rows) {
    const int count = engine.PictureCount();
    for (int i = 1; i <= count; ++i) {
        QStringList cells(IPicCol::Count);
        const QString mime = engine.PictureMime(i);
        if (IsPictureLinkMime(mime)) {
            cells[IPicCol::HasPicLink - 1] = Index00(i);
            cells[IPicCol::Mime_Link - 1] = PictureLinkPath(mime);
        } else {
            cells[IPicCol::HasPic - 1] = Index00(i);
            cells[IPicCol::Mime_Link - 1] = mime;
        }
        cells[IPicCol::Filename - 1] = name;
        cells[IPicCol::Description - 1] = engine.PictureDescription(i);
        const int type = engine.PictureType(i);
        cells[IPicCol::PicType - 1] = type >= 0 && type < typeNames.size() ? typeNames.at(type) : QString();
        cells[IPicCol::Path - 1] = folder;
        rows.push_back(std::move(cells));
    }
    if (count == 0 && !withPicturesOnly) {
        QStringList cells(IPicCol::Count);
        cells[IPicCol::Filename - 1] = name;
        cells[IPicCol::Path - 1] = folder;
        rows.push_back(std::move(cells));
    }
}

namespace {

int AppendEmbeddedPictureRows(DataGrid& list, const std::vector<QStringList>& rows) {
    for (const QStringList& cells : rows)
        list.AddRow(cells, QString::number(NextKey(list)));
    return int(rows.size());
}

} // namespace

int AddEmbeddedPictureRows(DataGrid& list, const TagEngine& engine, const QString& folder,
                           const QString& name, bool withPicturesOnly) {
    std::vector<QStringList> rows;
    EmbeddedPictureCells(engine, folder, name, withPicturesOnly, PictureTypeNames(), rows);
    return AppendEmbeddedPictureRows(list, rows);
}

bool ProgressDue(int position, int total) {
    if (position <= 1)
        return true;
    return position % (total < 201 ? 10 : 50) == 0;
}

namespace {

// A search entry as a path: a folder entry loses its ">>".
QString EntryPath(const QString& entry) {
    return entry.startsWith(QLatin1String(">>")) ? entry.mid(2) : entry;
}

} // namespace

int SearchEmbeddedPictures(DataGrid& list, TagEngine& engine, const QStringList& paths,
                           const EmbeddedSearch& how) {
    const int total = int(paths.size());
    const QStringList typeNames = PictureTypeNames(); // the settings and captions stay on this thread
    const bool withPicturesOnly = how.withPicturesOnly;
    // The readers open the files and build their rows; this loop appends them in order.
    ReadPool pool(total, how.threads > 0 ? how.threads : ScanReadThreads(), engine,
                  [&paths, &typeNames, withPicturesOnly](TagEngine& e, int n, FileRead& out) {
                      const QString path = EntryPath(paths.at(n));
                      if (SweepSkips(path))
                          return;
                      out.type = e.OpenFile(path);
                      if (out.type == 0)
                          return;
                      QString folder, name;
                      SplitPath(path, folder, name);
                      EmbeddedPictureCells(e, folder, name, withPicturesOnly, typeNames, out.rows);
                  });
    int read = 0;
    for (int n = 0; n < total; ++n) {
        if (how.pump)
            how.pump();
        if (how.aborted && how.aborted())
            break;
        const FileRead file = pool.Take(n, how.pump);
        if (SweepSkips(EntryPath(paths[n])))
            continue;
        if (how.progress && ProgressDue(n + 1, total))
            how.progress(QStringLiteral("%1 / %2").arg(n + 1).arg(total));
        if (file.type == 0)
            continue;
        ++read;
        AppendEmbeddedPictureRows(list, file.rows);
    }
    pool.Stop(); // the files in the readers' hands are finished, their rows dropped
    return read;
}

int EmbeddedPictureIndex(const DataGrid& list, int row) {
    if (row < 1 || row > list.Rows())
        return 0;
    QString cell = list.CellText(row, IPicCol::HasPic);
    if (cell.isEmpty())
        cell = list.CellText(row, IPicCol::HasPicLink);
    return cell.toInt();
}

bool StorePictureInSong(TagEngine& engine, const QString& songPath, const QString& picturePath,
                        const QString& description, int type, int index, bool asLink, QString* error) {
    auto fail = [&] {
        if (error)
            *error = engine.LastError();
        return false;
    };
    if (engine.OpenFile(songPath) == 0)
        return fail();
    const QString mime = asLink ? PictureLinkMime(picturePath) : PictureMimeForFile(picturePath);
    if (index < 1 || index > engine.PictureCount() + 1)
        index = engine.PictureCount() + 1;
    if (engine.AddPicture(picturePath, description, index, type, mime) == 0)
        return fail();
    if (engine.SaveV2(songPath) == 0)
        return fail();
    return true;
}

bool RemoveSongPictures(TagEngine& engine, const QString& songPath, int index, QString* error) {
    auto fail = [&] {
        if (error)
            *error = engine.LastError();
        return false;
    };
    if (engine.OpenFile(songPath) == 0)
        return fail();
    if (index == 0)
        engine.ClearPictures();
    else if (engine.RemovePicture(index) == 0)
        return fail();
    if (engine.SaveV2(songPath) == 0)
        return fail();
    return true;
}

int RefreshSongRows(DataGrid& list, TagEngine& engine, const QString& folder, const QString& name,
                    bool withPicturesOnly) {
    int first = 0;
    list.LockUpdate(true);
    for (int r = list.Rows(); r >= 1; --r) {
        if (list.CellView(r, IPicCol::Filename) == name && list.CellView(r, IPicCol::Path) == folder) {
            list.DeleteRow(r);
            first = r;
        }
    }
    if (first == 0)
        first = list.Rows() + 1;
    DataGrid fresh;
    DefineEmbeddedPictureColumns(fresh);
    if (engine.OpenFile(folder + u'/' + name) != 0)
        AddEmbeddedPictureRows(fresh, engine, folder, name, withPicturesOnly);
    for (int r = 1; r <= fresh.Rows(); ++r)
        list.InsertRow(first + r - 1, fresh.RowCells(r));
    for (int r = 1; r <= list.Rows(); ++r)
        list.SetRowKey(r, QString::number(r));
    list.LockUpdate(false);
    list.Refresh();
    return fresh.Rows() > 0 ? first : 0;
}
