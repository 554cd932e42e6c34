#include "RowOrder.h"

#include "RowJudge.h"

#include <QAbstractItemModel>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace {

/// Rows with their keys, all keys in one text. Compared by eight bytes first: that settles nearly every pair
/// without looking a key up.
class KeyedRows
{
public:
    explicit KeyedRows(int rows) { m_rows.reserve(size_t(rows)); }

    /// @return false where the row has no key, or the keys are too many to be kept
    bool add(const RowJudge &judge, const QModelIndex &sourceIndex)
    {
        const int at = m_keys.size();
        if (at > MaxKeyBytes || !judge.appendKey(sourceIndex, m_keys))
            return false;
        m_rows.push_back({0, at, m_keys.size() - at, sourceIndex.row()});
        return true;
    }

    void sort(bool isDescending, QVector<int> &rows)
    {
        for (Row &row : m_rows)
            row.prefix = prefix(row);
        const auto before = [this, isDescending](const Row &left, const Row &right) {
            const int order = compare(left, right);
            return order == 0 ? left.row < right.row : (order < 0) != isDescending;
        };
        std::sort(m_rows.begin(), m_rows.end(), before);
        std::transform(m_rows.begin(), m_rows.end(), rows.begin(), [](const Row &row) { return row.row; });
    }

private:
    static constexpr int MaxKeyBytes = 1 << 30; // a QByteArray ends at 2^31

    struct Row
    {
        quint64 prefix;
        int at;
        int length;
        int row;
    };

    quint64 prefix(const Row &row) const
    {
        uchar bytes[8] = {};
        memcpy(bytes, m_keys.constData() + row.at, size_t(qMin(row.length, 8)));
        return qFromBigEndian<quint64>(bytes);
    }

    int compare(const Row &left, const Row &right) const
    {
        if (left.prefix != right.prefix)
            return left.prefix < right.prefix ? -1 : 1;
        const int length = qMin(left.length, right.length);
        const int order = memcmp(m_keys.constData() + left.at, m_keys.constData() + right.at, size_t(length));
        return order != 0 ? order : left.length - right.length;
    }

    QByteArray m_keys;
    std::vector<Row> m_rows;
};

} // namespace

bool RowOrder::sorts(const QAbstractItemModel *source) const
{
    return source && column >= 0 && column < source->columnCount();
}

bool RowOrder::isBefore(const RowJudge &judge, const QAbstractItemModel *source,
                        const QModelIndex &sourceParent, int left, int right) const
{
    const QModelIndex a = source->index(left, column, sourceParent);
    const QModelIndex b = source->index(right, column, sourceParent);
    const bool isAscending = direction == Qt::AscendingOrder;
    if (isAscending ? judge.isLess(a, b) : judge.isLess(b, a))
        return true;
    return left < right && !(isAscending ? judge.isLess(b, a) : judge.isLess(a, b));
}

void RowOrder::sort(const RowJudge &judge, const QAbstractItemModel *source, const QModelIndex &sourceParent,
                    QVector<int> &rows) const
{
    KeyedRows keyed(rows.size());
    const bool haveKeys = std::all_of(rows.cbegin(), rows.cend(), [&](int row) {
        return keyed.add(judge, source->index(row, column, sourceParent));
    });
    if (haveKeys) {
        keyed.sort(direction == Qt::DescendingOrder, rows);
        return;
    }
    std::sort(rows.begin(), rows.end());
    const bool isAscending = direction == Qt::AscendingOrder;
    std::stable_sort(rows.begin(), rows.end(), [&](int left, int right) {
        const QModelIndex a = source->index(left, column, sourceParent);
        const QModelIndex b = source->index(right, column, sourceParent);
        return isAscending ? judge.isLess(a, b) : judge.isLess(b, a);
    });
}
