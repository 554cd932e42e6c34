#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>

namespace kernel {

/// Where long work shows how far it is and hears that it is to stop. The application installs one; without it
/// work runs to its end.
class NK_KERNEL_SERVICES_EXPORT ProgressDisplay : public QObject
{
    Q_OBJECT
public:
    /// The installed display; null where there is none.
    static ProgressDisplay *installed();
    /// Installs a display, which stays the caller's. Null takes it back; so does its destruction.
    static void install(ProgressDisplay *display);

    /// Work begins that may take long. @param text what is being done; foreign text, no markup
    virtual void begin(const QString &text) = 0;
    /// The work has come so far (0 to 1). May run the event loop, but must keep the person from everything but
    /// waiting and cancelling. @return false when the work is to stop
    virtual bool advance(double share) = 0;
    /// Milliseconds that lie at least between two calls of advance(): often enough to look smooth and to cancel
    /// at once, seldom enough to cost nothing.
    virtual int interval() const;
    /// The work has ended, in whatever way. Comes once for every begin.
    virtual void end() = 0;
};

/// One piece of long work, for its lifetime. Work inside of work shows nothing of its own and runs to its end.
///
/// advance() may run the event loop: nothing that the outside can change is to be held across it.
class NK_KERNEL_SERVICES_EXPORT Progress
{
    Q_DISABLE_COPY(Progress)
public:
    explicit Progress(const QString &text);
    ~Progress();

    /// Tells how far the work has come, 0 to 1; cheap, to be called often. False from the moment on in which
    /// the person has cancelled.
    bool advance(double share);
    bool isCancelled() const { return m_isCancelled; }
    /// Work of this kind is under way.
    static bool isRunning();

private:
    QPointer<ProgressDisplay> m_display;
    QElapsedTimer m_sinceTold;
    bool m_isCancelled = false;
};

} // namespace kernel
