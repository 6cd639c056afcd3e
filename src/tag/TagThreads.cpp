#include "tag/TagThreads.h"

#include "core/AppState.h"
#include "tag/Id3v2Keep.h"
#include "tag/TagEngine.h"
#include "tag/TagText.h"

#include <QLocale>
#include <algorithm>
#include <mutex>
#include <taglib/id3v1genres.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/tstring.h>
#include <thread>

void PrepareTagReadersForThreads() {
    static std::once_flag once;
    std::call_once(once, [] {
        // TagLib's factories and genre tables come into being on first use.
        (void)TagLib::ID3v2::FrameFactory::instance();
        (void)qlt_tag::KeepingFrameFactory();
        (void)TagLib::ID3v1::genreList();
        (void)TagLib::ID3v1::genreMap();
        (void)TagLib::ID3v1::genreIndex(TagLib::String("Rock"));
        // Its string conversions, and ours.
        (void)qlt_tag::FromTL(TagLib::String("\xc3\xa4", TagLib::String::UTF8));
        (void)qlt_tag::FromLatin1Field(TagLib::String("\xe4", TagLib::String::Latin1));
        // The tables of the row: type names, number formats, the track number pattern.
        (void)FileTypeNames();
        (void)QLocale().toString(1234.5, 'f', 3);
        TagEngine engine;
        (void)engine.TrackNumberValue();
        (void)engine.GenreName(0);
    });
}

int MachineReadThreads() {
    const unsigned cores = std::thread::hardware_concurrency();
    return std::clamp(int(cores), 1, 8);
}
