// Picture members of the TagEngine beyond the basic roles.
#include "tag/EngineData.h"
#include "tag/TagEngine.h"

QByteArray TagEngine::PictureData(int i) const {
    const auto& list = d->v2.pictures;
    if (i < 1 || i > static_cast<int>(list.size()))
        return QByteArray();
    return list[static_cast<size_t>(i - 1)].data;
}
