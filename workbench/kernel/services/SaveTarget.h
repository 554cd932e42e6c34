#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QCoreApplication>
#include <QString>

namespace kernel {

/// Whether a file may take the place of what a path names: renaming over a file, as DurableReplacement does it, asks
/// nobody whether the file may be written.
class NK_KERNEL_SERVICES_EXPORT SaveTarget
{
    Q_DECLARE_TR_FUNCTIONS(SaveTarget)

public:
    /// Looks at what the path leads to now.
    explicit SaveTarget(const QString &path);

    bool isWritable() const { return m_reason.isEmpty(); }
    /// Why it is not and what the person can do, clauses without capital and full stop.
    const QString &reason() const { return m_reason; }
    const QString &advice() const { return m_advice; }

    /// What the person can do where the system refuses a step of saving.
    static QString systemAdvice();

private:
    void refuse(const QString &reason, const QString &advice);

    QString m_reason;
    QString m_advice;
};

} // namespace kernel
