#include "cli/CliPrompt.h"

#include "cli/CliCommands.h"
#include "core/Captions.h"
#include "core/Settings.h"

#include <QDateTime>
#include <QFile>
#include <cstdio>
#include <unistd.h>

void CliPrompt::Tell(const QString& text, Icon icon) {
    if (icon == Icon::Critical)
        ++shownErrors;
    QString t = text;
    t.replace(QLatin1Char('\n'), QLatin1Char(' '));
    Err(t);
}

bool CliPrompt::AskYesNo(const QString& text, bool defaultYes, Icon) {
    Err(text + (defaultYes ? QStringLiteral(" -> yes") : QStringLiteral(" -> no")));
    return defaultYes;
}

bool CliPrompt::AskOkCancel(const QString& text, Icon) {
    Err(text + QStringLiteral(" -> OK"));
    return true;
}

std::optional<QString> CliPrompt::InputBox(const QString&, const QString& initial) {
    return initial;
}

std::optional<QString> CliPrompt::TitledInputBox(const QString&, const QString& text,
                                                 const QString& initial) {
    return InputBox(text, initial);
}

void LoadProgramTexts() {
    if (QFile::exists(SettingsFilePath()))
        LoadSettings();
    EnsureSettingsShape();
    if (QFile::exists(CaptionFilePath()))
        LoadCaptionTable();
}

TerminalProgress::TerminalProgress() : m_tty(::isatty(2) != 0) {}
TerminalProgress::~TerminalProgress() {
    Finish();
}

void TerminalProgress::Start(int max) {
    m_max = max;
    m_lastMs = -1000;
}

void TerminalProgress::Set(int value) {
    if (!m_tty)
        return;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (now - m_lastMs < 100 && value + 1 < m_max)
        return;
    m_lastMs = now;
    Draw(value);
}

void TerminalProgress::Text(const QString& text) {
    m_text = text;
}

void TerminalProgress::Draw(int value) {
    const int pct = m_max > 0 ? int(qint64(value + 1) * 100 / m_max) : 100;
    const QByteArray line =
        QStringLiteral("\r%1/%2 (%3%)  %4").arg(value + 1).arg(m_max).arg(pct).arg(m_text).toUtf8();
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
    std::fputs("\x1b[K", stderr);
    std::fflush(stderr);
    m_shown = true;
}

void TerminalProgress::Finish() {
    if (m_tty && m_shown) {
        std::fputs("\r\x1b[K", stderr);
        std::fflush(stderr);
    }
    m_shown = false;
}

ScanHooks TerminalScanHooks(TerminalProgress& progress) {
    ScanHooks h;
    h.showProgress = [&progress](int max) { progress.Start(max); };
    h.setProgress = [&progress](int v) { progress.Set(v); };
    h.progressText = [&progress](const QString& t) { progress.Text(t); };
    h.hideProgress = [&progress] { progress.Finish(); };
    return h;
}

bool ThreadsArgument(const QStringList& args, int& i, int& threads, const char* usage) {
    bool ok = false;
    const int n = i + 1 < args.size() ? args[i + 1].toInt(&ok) : 0;
    if (!ok || n < 1 || n > 8) {
        Err(QLatin1String(usage));
        return false;
    }
    ++i;
    threads = n;
    return true;
}
