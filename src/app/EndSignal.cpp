#include "app/EndSignal.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QWidget>

#include <csignal>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int g_pipe[2] = {-1, -1};

void OnSignal(int) {
    // Only what a signal handler may do: a byte into the pipe; the event loop does the rest.
    const char byte = 1;
    [[maybe_unused]] const ssize_t n = ::write(g_pipe[1], &byte, 1);
}

} // namespace

void CloseWindowsOnEndSignals(QObject* parent) {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, g_pipe) != 0)
        return; // the signals then end the program as they always did
    auto* notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, parent);
    QObject::connect(notifier, &QSocketNotifier::activated, parent, [] {
        char buf[16];
        while (::read(g_pipe[0], buf, sizeof buf) > 0) {
        }
        // Modal boxes first (a question open at the moment), then the windows.
        if (QWidget* modal = QApplication::activeModalWidget())
            modal->close();
        QApplication::closeAllWindows();
    });
    struct sigaction sa = {};
    sa.sa_handler = OnSignal;
    sigemptyset(&sa.sa_mask);
    sa.sa_flags = SA_RESTART;
    for (int sig : {SIGTERM, SIGHUP, SIGINT})
        ::sigaction(sig, &sa, nullptr);
}
