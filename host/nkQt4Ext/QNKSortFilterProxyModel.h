#pragma once

#include "nkQt4ExtExport.h"

#include <QSortFilterProxyModel>

#include <memory>

/// The host's sort-filter proxy: filterAcceptsRow and lessThan mean what they mean in the base and stay what
/// subclasses override.
class NK_QT4EXT_EXPORT QNKSortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit QNKSortFilterProxyModel(QObject *parent = nullptr);
    ~QNKSortFilterProxyModel() override;

    /// The order of texts in sorted lists: natural ("Part 9" before "Part 10"), case-insensitive, ties by
    /// code points.
    bool lessThan(const QString &left, const QString &right) const;

    /// Rows below an accepted row are accepted too. Default off.
    void setRecursiveAcceptEnabled(bool enabled);
    bool isRecursiveAcceptEnabled() const;

    /// Has the rows filtered anew, keeping the order of those that stay. What subclasses call when one of
    /// their filters changed.
    void refilter();

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    /// The row's own test, without the recursion over ancestors: what subclasses override.
    virtual bool acceptsRow(int sourceRow, const QModelIndex &sourceParent) const;
    /// Called once before a run of acceptsRow after a filter changed.
    virtual void prepareFilter();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
