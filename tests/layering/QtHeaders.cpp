#include "QtHeaders.h"

#include <QDir>

QtHeaders::QtHeaders(const QString &includeFolder)
{
    const QDir root(includeFolder);
    const QStringList modules = root.entryList({QStringLiteral("Qt*")}, QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &module : modules) {
        const QStringList headers = QDir(root.filePath(module)).entryList(QDir::Files);
        for (const QString &header : headers)
            m_modules.insert(header, module);
    }
}

QString QtHeaders::moduleOf(const QString &included) const
{
    const QString module = included.section(QLatin1Char('/'), 0, -2);
    const QString found = m_modules.value(included.section(QLatin1Char('/'), -1));
    return module.isEmpty() || module == found ? found : QString();
}
