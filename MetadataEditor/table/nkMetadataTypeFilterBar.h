#pragma once

#include <nkQt4Ext/QNKFilterBar.h>

#include <QList>
#include <QMap>
#include <QString>

/// The type filter of the key/value table: the value types 0..7, and 8 for tags. Its search field and its search-depth
/// switch start hidden.
class nkMetadataTypeFilterBar : public QNKFilterBar
{
    Q_OBJECT
public:
    explicit nkMetadataTypeFilterBar(QWidget *parent = nullptr);
    ~nkMetadataTypeFilterBar() override;

protected:
    QString getLabel(int number) const override;

private:
    const QMap<int, QString> m_labels;
};
