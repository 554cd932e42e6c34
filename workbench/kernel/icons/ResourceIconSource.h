#pragma once

#include "IconSource.h"

#include <QHash>
#include <QSet>

namespace kernel {

/// The icons of the resource tree ":/iconmanager/resources/CATEGORY/NAME.svg", category "Various" where none
/// is given. They are read by Qt's SVG plug-ins at run time; where those are missing, every icon is a
/// placeholder and the log names the package.
class NK_KERNEL_SERVICES_EXPORT ResourceIconSource final : public IconSource
{
    Q_OBJECT
public:
    QIcon icon(const QString &name, const QString &category = QString()) override;
    QPixmap pixmap(const QString &path) override;
    QPixmap render(const QString &path, const QSize &size) override;

private:
    QString resolve(const QString &path) const;
    bool isReadable(const QString &file);
    void tellMissing(const QString &file);

    QHash<QString, QIcon> m_icons;
    QSet<QString> m_told;
};

} // namespace kernel
