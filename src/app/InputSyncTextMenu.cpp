#include "app/InputSyncTextMenu.h"

#include "app/FrmInput.h"
#include "app/FrmSText.h"
#include "app/FrmSongtext.h"
#include "app/MessageBoxPrompt.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "list/InputColumns.h"
#include "tag/TagEngine.h"
#include "tag/TagEngineLrc.h"

#include <QTabWidget>

namespace {

QString RowSong(const DataGrid& list, int r) {
    return InputRowPath(list, r);
}

} // namespace

QString SyncTextSong(const DataGrid& list) {
    int r = list.CurRow();
    if (r < 1 || r > list.Rows()) {
        const std::vector<int> sel = list.SelectedRows();
        r = sel.size() == 1 ? sel.front() : 0;
    }
    return r >= 1 ? RowSong(list, r) : QString();
}

bool SongHasSyncText(const QString& song) {
    if (song.isEmpty())
        return false;
    TagEngine& engine = TagEngine::Shared();
    return engine.OpenFile(song) == 1 && LrcFrameIndex(engine) > 0;
}

bool RunSyncTextKey(FrmInput* window, const QString& key) {
    if (!key.startsWith(QLatin1String("sText")))
        return false;
    const DataGrid& list = Grids::LbxInput();
    const QString song = SyncTextSong(list);
    if (key == u"sTextPlay") {
        if (!window->frmSongtext->StartFromSong(song) && window->frmSongtext->AbortFlag)
            AppPrompt().Tell(Caption(CapNoTimestamps));
    } else if (key == u"sTextShow") {
        if (window->frmSText->LoadSongText(song))
            window->TabInput->setCurrentWidget(window->frmSText);
    } else if (key == u"sTextRemove") {
        window->frmSText->RemoveSongText(song);
    } else if (key == u"sTextPlayAll") {
        QStringList songs;
        for (int r : list.SelectedRows())
            if (SongHasSyncText(RowSong(list, r)))
                songs << RowSong(list, r);
        if (songs.isEmpty())
            AppPrompt().Tell(Caption(CapNoLrcText));
        else if (!window->frmSongtext->PlaySongs(songs))
            AppPrompt().Tell(Caption(CapNoTimestamps));
    } else {
        return false;
    }
    return true;
}
