#include "Progress.h"

namespace kernel {

namespace {

constexpr int UsualInterval = 40;

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

int ProgressDisplay::interval() const
{
    return UsualInterval;
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
    if (!m_display || m_isCancelled) {
        return !m_isCancelled;
    }
    if (!m_sinceTold.isValid() || m_sinceTold.elapsed() >= m_display->interval()) {
        m_isCancelled = !m_display->advance(share);
        m_sinceTold.start();
    }
    return !m_isCancelled;
}

} // namespace kernel
