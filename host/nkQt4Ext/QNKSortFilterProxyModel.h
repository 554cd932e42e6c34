#pragma once

#include "nkQt4ExtExport.h"

#include <QSortFilterProxyModel>

#include <memory>

/// The host's sort-filter proxy: filterAcceptsRow and lessThan mean what they mean in the base and stay what
/// subclasses override. Rows that are neither less nor greater stand in the order of the source.
///
/// How rows are mapped, filtered and sorted is this class's own: only rows below column 0 of a row are shown,
/// a list of children is looked at when somebody asks for it, and a changed filter keeps the order of the rows
/// it leaves. Therefore the base's functions of that matter that are not virtual are hidden here: sortColumn,
/// sortOrder, setDynamicSortFilter, dynamicSortFilter, setRecursiveFilteringEnabled,
/// isRecursiveFilteringEnabled and invalidate mean the same; the base's filter by a pattern and its sort roles
/// do not exist. Never call them through a pointer to the base.
class NK_QT4EXT_EXPORT QNKSortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit QNKSortFilterProxyModel(QObject *parent = nullptr);
    ~QNKSortFilterProxyModel() override;

    /// The order of texts in sorted lists: natural ("Part 9" before "Part 10"), case-insensitive, ties by
    /// code points.
    bool lessThan(const QString &left, const QString &right) const;

    /// A row stays where one below it is accepted. Default off.
    void setRecursiveFilteringEnabled(bool enabled);
    bool isRecursiveFilteringEnabled() const;
    /// Rows below an accepted row are accepted too. Default off.
    void setRecursiveAcceptEnabled(bool enabled);
    bool isRecursiveAcceptEnabled() const;
    /// Whether changed data filters and sorts their rows anew. Default on.
    void setDynamicSortFilter(bool enabled);
    bool dynamicSortFilter() const;

    /// Has the rows filtered anew, keeping the order of those that stay. What subclasses call when one of
    /// their filters changed.
    void refilter();
    /// Has the rows filtered and sorted anew.
    void invalidate();

    /// Sorts by a column of the source; -1, and a column that is not there, for the order of the source.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    int sortColumn() const;
    Qt::SortOrder sortOrder() const;

    void setSourceModel(QAbstractItemModel *source) override;
    QModelIndex mapToSource(const QModelIndex &proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex &sourceIndex) const override;
    QItemSelection mapSelectionToSource(const QItemSelection &proxySelection) const override;
    QItemSelection mapSelectionFromSource(const QItemSelection &sourceSelection) const override;

    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    using QObject::parent;
    QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    /// Vertical headers are those of the source's rows.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant &value,
                       int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QModelIndex buddy(const QModelIndex &index) const override;
    QModelIndexList match(const QModelIndex &start, int role, const QVariant &value, int hits = 1,
                          Qt::MatchFlags flags = Qt::MatchFlags(Qt::MatchStartsWith
                                                                | Qt::MatchWrap)) const override;
    QSize span(const QModelIndex &index) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;
    QStringList mimeTypes() const override;
    Qt::DropActions supportedDropActions() const override;

    /// New rows stand in the source before the row that is at this place here, or at the end.
    bool insertRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    bool insertColumns(int column, int count, const QModelIndex &parent = QModelIndex()) override;
    bool removeRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    bool removeColumns(int column, int count, const QModelIndex &parent = QModelIndex()) override;

    // What the base would do to a mapping that is not used here.
    void setFilterRegExp(const QRegExp &) = delete;
    void setFilterRegExp(const QString &) = delete;
    void setFilterRegularExpression(const QRegularExpression &) = delete;
    void setFilterRegularExpression(const QString &) = delete;
    void setFilterWildcard(const QString &) = delete;
    void setFilterFixedString(const QString &) = delete;
    void setFilterKeyColumn(int) = delete;
    void setFilterRole(int) = delete;
    void setFilterCaseSensitivity(Qt::CaseSensitivity) = delete;
    void setSortRole(int) = delete;
    void setSortCaseSensitivity(Qt::CaseSensitivity) = delete;
    void setSortLocaleAware(bool) = delete;

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    /// The row's own test, without the recursion over ancestors: what subclasses override. Accepts all.
    virtual bool acceptsRow(int sourceRow, const QModelIndex &sourceParent) const;
    /// Called once before a run of acceptsRow after a filter changed.
    virtual void prepareFilter();

    /// The prepared form of lessThan: appends bytes whose order, byte by byte, is that of lessThan, so that a
    /// long list is sorted without asking lessThan. Keys of one column have to be comparable: none may be the
    /// beginning of another. Who overrides lessThan in a class that has keys overrides this one too.
    /// @param sourceIndex the cell in the sort column
    /// @return false where there is no key: lessThan then sorts the whole list. What this class answers.
    virtual bool appendSortKey(const QModelIndex &sourceIndex, QByteArray &key) const;
    /// Appends the key of a text in the order of lessThan(QString, QString).
    static void appendTextSortKey(const QString &text, QByteArray &key);
    /// The same in the opposite order.
    static void appendInvertedTextSortKey(const QString &text, QByteArray &key);

    void invalidateFilter() = delete;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
