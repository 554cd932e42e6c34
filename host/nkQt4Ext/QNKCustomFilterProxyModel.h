#pragma once

#include "QNKSortFilterProxyModel.h"

#include <memory>

class QNKItemFilter;

/// A sort-filter proxy with a wildcard search over column 0 and any number of item filters: a row is accepted
/// when the search and every enabled filter accept it.
class NK_QT4EXT_EXPORT QNKCustomFilterProxyModel : public QNKSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit QNKCustomFilterProxyModel(QObject *parent = nullptr);
    ~QNKCustomFilterProxyModel() override;

    /// The proxy follows the filter's changes until the filter dies or is removed; not owned. A filter added
    /// twice counts once.
    void addCustomFilter(QNKItemFilter *filter);
    void removeCustomFilter(QNKItemFilter *filter);

    /// The search: * and ? are wildcards; matches anywhere in the text, case-insensitively. Empty: none.
    void setFilterWildcard(const QString &pattern);

protected:
    bool acceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    /// Texts have keys.
    bool appendSortKey(const QModelIndex &sourceIndex, QByteArray &key) const override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
