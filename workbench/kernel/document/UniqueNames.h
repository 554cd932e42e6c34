#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QHash>
#include <QString>

namespace kernel {

/// Finds free names: base itself, else base followed by the smallest free number from 2 on. Remembers for
/// each base up to where everything is taken, so that giving out a hundred thousand numbered names costs a
/// hundred thousand steps and not their square.
class NK_KERNEL_SERVICES_EXPORT UniqueNames
{
public:
    /// @param isTaken answers whether a name is in use
    template <typename IsTaken>
    QString unique(const QString &base, IsTaken isTaken)
    {
        if (!isTaken(base)) {
            return base;
        }
        int &number = m_nextNumber[base];
        number = qMax(number, FirstNumber);
        QString name = base + QString::number(number);
        while (isTaken(name)) {
            name = base + QString::number(++number);
        }
        return name;
    }

    /// To be told whenever a name that was in use no longer is.
    void released(const QString &name);

private:
    static constexpr int FirstNumber = 2;

    /// For a base: every number from FirstNumber up to before this one is taken.
    QHash<QString, int> m_nextNumber;
};

} // namespace kernel
