#pragma once
// ReadPool: reads the files of a list of entries on several threads, each with a
// TagEngine of its own, and hands the results back in the order of the entries.
//
// The thread that owns the list takes entry 0, 1, 2 ... in turn; the readers run at most
// a window of entries ahead of it, so memory stays small and an abort wastes little.
// Stop() lets every reader finish the file in its hands and waits for it; the results
// not yet taken are dropped.

#include "list/modScan.h"

#include <QString>
#include <QStringList>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

class DataGrid;
class TagEngine;

// What a reader gives for one entry.
struct FileRead {
    int type = 0;      // OpenFile's result; 0 also for a folder entry or an entry not read
    QStringList cells; // the row's cells (empty when none were built)
    QString stamp;     // size and modification time before the read (FileStampText)

    // The searches: the rows one file gives, in order (any number, or none).
    std::vector<QStringList> rows;
};

class ReadPool {
public:
    // Reads `count` entries with `threads` readers; work(engine, i, out) reads entry i.
    // With one thread (or one entry) no thread is started: Take reads the entry itself
    // with `engine`, which the readers on threads never touch.
    using Work = std::function<void(TagEngine& engine, int index, FileRead& out)>;
    ReadPool(int count, int threads, TagEngine& engine, Work work, int window = 256);
    ~ReadPool();
    ReadPool(const ReadPool&) = delete;
    ReadPool& operator=(const ReadPool&) = delete;

    // The result of entry i; entries must be taken in order, each once. While the result
    // is not ready, `idle` (if set) runs about every 10 ms.
    FileRead Take(int i, const std::function<void()>& idle);
    // The readers finish the files in their hands and end.
    void Stop();

private:
    void Run();

    struct Slot {
        FileRead read;
        bool ready = false;
    };
    const int m_count;
    const int m_window;
    TagEngine& m_engine;
    Work m_work;
    bool m_inline = false;
    std::mutex m_mutex;
    std::condition_variable m_readyCv; // a result became ready
    std::condition_variable m_roomCv;  // a slot became free, or stop
    std::vector<Slot> m_slots;         // ring of m_window slots: entry i in slot i % m_window
    int m_next = 0;                    // next entry to hand to a reader
    int m_taken = 0;                   // entries taken by the owner
    bool m_stop = false;
    bool m_ownerWaiting = false; // the owner sleeps in Take
    int m_wantUpTo = 0;          // ... until this entry is read (or the last one)
    int m_readersWaiting = 0;    // readers held back by the window
    int m_roomMark = 0;          // m_taken when they were last woken
    std::vector<std::thread> m_threads;
};

// How many readers a scan uses: 1 when the preferences ask for one thread (or the
// machine has one core), else all cores, at most 8.
int ScanReadThreads();

// The owner's side of a loop over entries, shared by the scan, the re-read and the
// refresh. At the head of step i: events run, the abort flag is tested (false: the user
// aborted), the bar moves to i.
bool EntryStepBegins(const ScanHooks& hooks, int i);
// The progress text of entry i of count into the footer of column FileName, when it is due.
void EntryProgressText(DataGrid& list, const ScanHooks& hooks, int i, int count);
