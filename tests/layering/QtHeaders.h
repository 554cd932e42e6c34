#pragma once

#include <QHash>
#include <QString>

/// Which module of Qt a header belongs to, read from the folders of the installed headers.
class QtHeaders
{
public:
    /// @param includeFolder the folder with the subfolders "QtCore", "QtGui", ...
    explicit QtHeaders(const QString &includeFolder);

    /// The module of an included name such as "QWidget", "qwidget.h", "QtWidgets" or "QtWidgets/QWidget";
    /// empty where Qt has no such header.
    QString moduleOf(const QString &included) const;

    /// False where the folder holds no headers of Qt at all.
    bool isUsable() const { return !m_modules.isEmpty(); }

private:
    QHash<QString, QString> m_modules; // header without folder -> module
};
