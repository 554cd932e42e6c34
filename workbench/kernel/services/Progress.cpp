#include "Progress.h"

namespace kernel {

namespace {

/// Often enough to look smooth and to cancel at once, seldom enough to cost nothing.
constexpr qint64 MillisecondsBetween = 40;

int running = 0;

QPointer<ProgressDisplay> &theDisplay()
{
    static QPointer<ProgressDisplay> display;
    return display;
}

} // namespace

ProgressDisplay *ProgressDisplay::installed()
{
    return theDisplay();
}

void ProgressDisplay::install(ProgressDisplay *display)
{
    theDisplay() = display;
}

Progress::Progress(const QString &text)
{
    if (running++ == 0) {
        m_display = ProgressDisplay::installed();
    }
    if (m_display) {
        m_display->begin(text);
    }
}

Progress::~Progress()
{
    --running;
    if (m_display) {
        m_display->end();
    }
}

bool Progress::isRunning()
{
    return running > 0;
}

bool Progress::advance(double share)
{
    const bool isTime = !m_sinceTold.isValid() || m_sinceTold.elapsed() >= MillisecondsBetween;
    if (m_display && isTime && !m_isCancelled) {
        m_isCancelled = !m_display->advance(share);
        m_sinceTold.start();
    }
    return !m_isCancelled;
}

} // namespace kernel
