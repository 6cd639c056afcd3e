#include "list/ftcReadPool.h"

#include "core/AppState.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "tag/TagEngine.h"
#include "tag/TagThreads.h"

#include <chrono>

ReadPool::ReadPool(int count, int threads, TagEngine& engine, Work work, int window)
    : m_count(count), m_window(std::max(window, 1)), m_engine(engine), m_work(std::move(work)) {
    if (threads <= 1 || count <= 1) {
        m_inline = true;
        return;
    }
    m_slots.resize(static_cast<std::size_t>(m_window));
    PrepareTagReadersForThreads();
    const int n = std::max(1, std::min(threads, count));
    m_threads.reserve(static_cast<std::size_t>(n));
    for (int t = 0; t < n; ++t)
        m_threads.emplace_back([this] { Run(); });
}

ReadPool::~ReadPool() {
    Stop();
}

void ReadPool::Run() {
    TagEngine engine;
    for (;;) {
        int i;
        {
            std::unique_lock lock(m_mutex);
            ++m_readersWaiting;
            m_roomCv.wait(lock,
                          [this] { return m_stop || m_next >= m_count || m_next < m_taken + m_window; });
            --m_readersWaiting;
            if (m_stop || m_next >= m_count)
                return;
            i = m_next++;
        }
        FileRead read;
        m_work(engine, i, read);
        bool wake;
        {
            std::lock_guard lock(m_mutex);
            Slot& s = m_slots[static_cast<std::size_t>(i % m_window)];
            s.read = std::move(read);
            s.ready = true;
            // The owner sleeps until a batch is ready, not for every file: a wake-up per
            // file costs more than the file when the owner and the readers share the cores.
            wake = m_ownerWaiting && (i >= m_wantUpTo || m_next >= m_count);
        }
        if (wake)
            m_readyCv.notify_one();
    }
}

FileRead ReadPool::Take(int i, const std::function<void()>& idle) {
    if (m_inline) {
        FileRead out;
        m_work(m_engine, i, out);
        return out;
    }
    std::unique_lock lock(m_mutex);
    Slot& s = m_slots[static_cast<std::size_t>(i % m_window)];
    if (!s.ready) {
        // Readers held back by the window get the room taken so far before the owner sleeps.
        if (m_readersWaiting > 0) {
            m_roomMark = m_taken;
            m_roomCv.notify_all();
        }
        // A quarter of the window further on, but never beyond what the window lets the
        // readers reach before entry i is taken (a small window would only poll).
        m_wantUpTo = std::min({i + std::max(1, m_window / 4), i + m_window - 1, m_count - 1});
        m_ownerWaiting = true;
        while (!s.ready) {
            if (m_threads.empty())
                break; // stopped: nothing comes any more
            m_readyCv.wait_for(lock, std::chrono::milliseconds(10));
            if (!s.ready && idle) {
                lock.unlock();
                idle();
                lock.lock();
            }
        }
        m_ownerWaiting = false;
        if (!s.ready)
            return {};
    }
    FileRead out = std::move(s.read);
    s.read = FileRead();
    s.ready = false;
    m_taken = i + 1;
    const bool room = m_readersWaiting > 0 && m_taken - m_roomMark >= std::max(1, m_window / 8);
    if (room)
        m_roomMark = m_taken;
    lock.unlock();
    if (room)
        m_roomCv.notify_all();
    return out;
}

void ReadPool::Stop() {
    {
        std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_roomCv.notify_all();
    for (std::thread& t : m_threads)
        t.join();
    std::lock_guard lock(m_mutex);
    m_threads.clear();
    for (Slot& s : m_slots)
        s = Slot();
}

int ScanReadThreads() {
    if (SettingOn(Ini::ScanOneThread, Ini::Col1))
        return 1;
    return MachineReadThreads();
}

bool EntryStepBegins(const ScanHooks& hooks, int i) {
    State().SuppressEvents = true;
    if (hooks.pump)
        hooks.pump();
    if (State().AbortRequested)
        return false;
    if (hooks.setProgress)
        hooks.setProgress(i);
    return true;
}

void EntryProgressText(DataGrid& list, const ScanHooks& hooks, int i, int count) {
    if (!ProgressTextDue(i, count))
        return;
    const QString text = ScanProgressText(i, count);
    list.SetFooterText(InCol::FileName, text);
    if (hooks.progressText)
        hooks.progressText(text);
}
