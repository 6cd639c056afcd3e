#include "tag/TagEngineLrc.h"

#include "tag/TagEngine.h"

#include <utility>
#include <vector>

namespace {

bool IsLrcName(const QString& name) {
    return name.compare(QLatin1String("lrc"), Qt::CaseInsensitive) == 0;
}

} // namespace

int LrcFrameIndex(const TagEngine& engine) {
    for (int i = 1; i <= engine.UserFrameCount(); ++i)
        if (IsLrcName(engine.UserFrameName(i)))
            return i;
    return 0;
}

bool FirstUserFrameIsLrc(const TagEngine& engine) {
    return engine.UserFrameCount() > 0 && IsLrcName(engine.UserFrameName(1));
}

QString LrcFrameText(const TagEngine& engine) {
    const int i = LrcFrameIndex(engine);
    return i ? engine.UserFrameText(i) : QString();
}

int SetLrcFrame(TagEngine& engine, const QString& text) {
    const int count = engine.UserFrameCount();
    int lrcFrames = 0;
    for (int i = 1; i <= count; ++i)
        lrcFrames += IsLrcName(engine.UserFrameName(i));
    if (count == 0 || (FirstUserFrameIsLrc(engine) && lrcFrames == 1))
        return engine.SetUserFrame(1, QStringLiteral("lrc"), text);
    // Rebuild the frames with the text first and every other frame after it, in order.
    std::vector<std::pair<QString, QString>> others;
    for (int i = 1; i <= count; ++i)
        if (!IsLrcName(engine.UserFrameName(i)))
            others.emplace_back(engine.UserFrameName(i), engine.UserFrameText(i));
    for (int i = count; i >= 1; --i)
        if (!engine.SetUserFrame(i, QString(), QString()))
            return 0;
    if (!engine.SetUserFrame(1, QStringLiteral("lrc"), text))
        return 0;
    for (const auto& [name, value] : others)
        if (!engine.SetUserFrame(engine.UserFrameCount() + 1, name, value))
            return 0;
    return 1;
}

int RemoveLrcFrame(TagEngine& engine) {
    int removed = 0;
    for (int i = engine.UserFrameCount(); i >= 1; --i)
        if (IsLrcName(engine.UserFrameName(i)) && engine.SetUserFrame(i, QString(), QString()))
            ++removed;
    return removed > 0 ? 1 : 0;
}
