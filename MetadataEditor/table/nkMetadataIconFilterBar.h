#pragma once

#include <nkQt4Ext/QNKFilterBar.h>

#include <QList>
#include <QMap>
#include <QString>

/// The state filter of metadata sets: locked, unlocked, asset, unassigned
/// (nkMetadataFilterModel::State). Its search field and its search-depth
/// switch start hidden.
class nkMetadataIconFilterBar : public QNKFilterBar
{
    Q_OBJECT
public:
    explicit nkMetadataIconFilterBar(QWidget *parent = nullptr);
    ~nkMetadataIconFilterBar() override;

protected:
    QString getLabel(int number) const override;
    /// 1 for locked and unlocked, 2 for the rest.
    int getCategory(int number) const override;

private:
    const QMap<int, QString> m_labels;
    const QList<int> m_firstGroup;
};
