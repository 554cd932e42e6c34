#include "RandomTree.h"

#include <algorithm>

RandomTree::RandomTree(quint32 seed, bool isFlat, QObject *parent)
    : QAbstractItemModel(parent), m_random(seed), m_isFlat(isFlat)
{
    for (int i = 0; i < 6; ++i)
        m_root.rows.push_back(makeRow(&m_root, 1));
}

RandomTree::~RandomTree() = default;

/// Few texts, so that many are equal, and some only but for their case or by their number.
QString RandomTree::anyText()
{
    static const QStringList words{"a", "A", "b", "ab", "Ab", "a2", "a10", "b02", "b2", ""};
    return words[below(words.size())];
}

void RandomTree::fill(Row &row)
{
    row.text = anyText();
    row.number = below(5);
}

std::unique_ptr<RandomTree::Row> RandomTree::makeRow(Row *above, int depth)
{
    auto row = std::make_unique<Row>();
    row->above = above;
    fill(*row);
    if (!m_isFlat && depth < 4) {
        for (int i = below(3); i > 0; --i)
            row->rows.push_back(makeRow(row.get(), depth + 1));
    }
    return row;
}

QString RandomTree::change()
{
    const int dice = below(100);
    if (dice < 25)
        return insert(), QStringLiteral("insert");
    if (dice < 46)
        return remove(), QStringLiteral("remove");
    if (dice < 70)
        return changeOne(), QStringLiteral("change one");
    if (dice < 80)
        return changeRange(), QStringLiteral("change a range");
    if (dice < 90)
        return changeManyThenTell(), QStringLiteral("change many");
    if (dice < 95)
        return move(), QStringLiteral("move");
    if (dice < 98)
        return shuffle(), QStringLiteral("shuffle");
    return startAnew(), QStringLiteral("reset");
}

/// A row at any depth, or the root.
QModelIndex RandomTree::anyParent()
{
    QModelIndex at;
    while (!m_isFlat && rowCount(at) > 0 && below(3) > 0)
        at = index(below(rowCount(at)), 0, at);
    return at;
}

void RandomTree::insert()
{
    const QModelIndex parent = anyParent();
    Row &above = rowAt(parent);
    const int count = below(60) == 0 ? 80 : 1 + below(3);
    if (above.rows.size() > 40)
        return;
    const int first = below(int(above.rows.size()) + 1);
    beginInsertRows(parent, first, first + count - 1);
    for (int i = 0; i < count; ++i)
        above.rows.insert(above.rows.begin() + first, makeRow(&above, 3));
    endInsertRows();
}

void RandomTree::remove()
{
    const QModelIndex parent = anyParent();
    Row &above = rowAt(parent);
    if (above.rows.empty())
        return;
    const int size = int(above.rows.size());
    const int first = below(size);
    const int count = size > 30 ? size - first : 1 + below(qMin(3, size - first));
    beginRemoveRows(parent, first, first + count - 1);
    above.rows.erase(above.rows.begin() + first, above.rows.begin() + first + count);
    endRemoveRows();
}

void RandomTree::changeOne()
{
    const QModelIndex parent = anyParent();
    if (rowCount(parent) == 0)
        return;
    const int row = below(rowCount(parent));
    fill(*rowAt(parent).rows[size_t(row)]);
    Q_EMIT dataChanged(index(row, 0, parent), index(row, 1, parent));
}

void RandomTree::changeRange()
{
    const QModelIndex parent = anyParent();
    const int count = rowCount(parent);
    if (count == 0)
        return;
    for (const auto &row : rowAt(parent).rows)
        fill(*row);
    Q_EMIT dataChanged(index(0, 0, parent), index(count - 1, 1, parent), {Qt::DisplayRole});
}

void RandomTree::changeManyThenTell()
{
    const QModelIndex parent = anyParent();
    QVector<int> changed;
    for (int row = 0; row < rowCount(parent); ++row) {
        if (below(3) == 0)
            changed.append(row);
    }
    for (const int row : qAsConst(changed))
        fill(*rowAt(parent).rows[size_t(row)]);
    std::shuffle(changed.begin(), changed.end(), m_random);
    for (const int row : qAsConst(changed))
        Q_EMIT dataChanged(index(row, 0, parent), index(row, 1, parent), {Qt::DisplayRole});
}

void RandomTree::move()
{
    const QModelIndex from = anyParent();
    const QModelIndex to = anyParent();
    if (rowCount(from) == 0)
        return;
    const int row = below(rowCount(from));
    const int place = below(rowCount(to) + 1);
    Row &source = rowAt(from);
    Row &target = rowAt(to);
    if (!beginMoveRows(from, row, row, to, place))
        return;
    std::unique_ptr<Row> moved = std::move(source.rows[size_t(row)]);
    source.rows.erase(source.rows.begin() + row);
    const bool isAfter = &source == &target && place > row;
    moved->above = &target;
    target.rows.insert(target.rows.begin() + place - (isAfter ? 1 : 0), std::move(moved));
    endMoveRows();
}

void RandomTree::shuffle()
{
    Row &above = rowAt(anyParent());
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::shuffle(above.rows.begin(), above.rows.end(), m_random);
    QModelIndexList after;
    for (const QModelIndex &index : before)
        after.append(indexOf(rowAt(index), index.column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

void RandomTree::startAnew()
{
    beginResetModel();
    m_root.rows.clear();
    for (int i = below(8); i > 0; --i)
        m_root.rows.push_back(makeRow(&m_root, 1));
    endResetModel();
}

QModelIndex RandomTree::indexOf(const Row &row, int column) const
{
    if (!row.above)
        return {};
    const auto &rows = row.above->rows;
    const auto at = std::find_if(rows.begin(), rows.end(),
                                 [&](const auto &each) { return each.get() == &row; });
    return createIndex(int(at - rows.begin()), column, const_cast<Row *>(&row));
}

RandomTree::Row &RandomTree::rowAt(const QModelIndex &index) const
{
    return index.isValid() ? *static_cast<Row *>(index.internalPointer()) : m_root;
}

QModelIndex RandomTree::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column, rowAt(parent).rows[size_t(row)].get())
                                         : QModelIndex();
}

QModelIndex RandomTree::parent(const QModelIndex &child) const
{
    return child.isValid() ? indexOf(*rowAt(child).above) : QModelIndex();
}

int RandomTree::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : int(rowAt(parent).rows.size());
}

int RandomTree::columnCount(const QModelIndex &) const
{
    return 2;
}

QVariant RandomTree::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    return index.column() == 0 ? QVariant(rowAt(index).text) : QVariant(rowAt(index).number);
}
