#pragma once

#include "nkQt4ExtExport.h"

#include <QModelIndex>
#include <QObject>

/// A filter that a QNKCustomFilterProxyModel asks for every row.
class NK_QT4EXT_EXPORT QNKItemFilter : public QObject
{
    Q_OBJECT
public:
    explicit QNKItemFilter(QObject *parent = nullptr);
    ~QNKItemFilter() override;

    /// A filter that is not enabled accepts everything. Default: enabled.
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    /// The row's test while enabled. @param sourceIndex column 0 of the row in the proxy's source model
    virtual bool accepts(const QModelIndex &sourceIndex) const = 0;

Q_SIGNALS:
    /// The answers of accepts may have changed. Never emitted where nothing did.
    void filterChanged();

private:
    bool m_enabled = true;
};
