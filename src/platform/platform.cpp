#include "platform/platform.h"

#include "platform/qt_platform.h"

#include <ctime>

namespace pw {

qint64 coarseTicks()
{
    timespec t{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &t);
    return qint64(t.tv_sec) * 1000 + t.tv_nsec / 1000000;
}

int Platform::msgBox(const QString &text, int style, const QString &title)
{
    IdleQueue::Busy busy(m_idle);
    if (beforeModal)
        beforeModal();
    return showMessage(text, style, title);
}

ErrorCode Platform::showCommonDialog(CommonDialog::Kind kind, CommonDialog &dialog)
{
    IdleQueue::Busy busy(m_idle);
    if (beforeModal)
        beforeModal();
    return showDialog(kind, dialog);
}

// The installed platform.
static Platform *g_platform = nullptr;

Platform &platform()
{
    if (!g_platform) {
        static QtPlatform real;
        g_platform = &real;
    }
    return *g_platform;
}

void setPlatform(Platform *p)
{
    g_platform = p;
}

} // namespace pw
