#include "CellChanges.h"

#include <QDateTime>
#include <QIcon>
#include <QMetaType>

#include <algorithm>
#include <cmath>

namespace {
/// More separate announcements than this cost views and proxies more than one over all rows between.
constexpr int MostChanges = 32;

bool sameReal(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

/// Element by element: QVariant's own comparison of lists converts ("1" equals 1).
bool sameList(const QVariantList &left, const QVariantList &right)
{
    return left.size() == right.size()
           && std::equal(left.begin(), left.end(), right.begin(), isSameCellValue);
}

/// QDateTime's own comparison is of moments, whatever their time zones.
bool sameDateTime(const QDateTime &left, const QDateTime &right)
{
    return left == right && left.timeSpec() == right.timeSpec()
           && left.offsetFromUtc() == right.offsetFromUtc();
}

void insertRole(QVector<int> &roles, int role)
{
    const auto at = std::lower_bound(roles.begin(), roles.end(), role);
    if (at == roles.end() || *at != role)
        roles.insert(at, role);
}

void unite(CellChanges::Change &into, const CellChanges::Change &change)
{
    into.firstRow = qMin(into.firstRow, change.firstRow);
    into.lastRow = qMax(into.lastRow, change.lastRow);
    into.firstColumn = qMin(into.firstColumn, change.firstColumn);
    into.lastColumn = qMax(into.lastColumn, change.lastColumn);
    for (int role : change.roles)
        insertRole(into.roles, role);
}

bool continues(const CellChanges::Change &run, const CellChanges::Change &next)
{
    return run.lastRow + 1 == next.firstRow && run.firstColumn == next.firstColumn
           && run.lastColumn == next.lastColumn && run.roles == next.roles;
}
} // namespace

bool isSameCellValue(const QVariant &left, const QVariant &right)
{
    if (left.userType() != right.userType())
        return false;
    switch (left.userType()) {
    case QMetaType::Double:
        return sameReal(left.toDouble(), right.toDouble());
    case QMetaType::Float:
        return sameReal(double(left.toFloat()), double(right.toFloat()));
    case QMetaType::QVariantList:
        return sameList(left.toList(), right.toList());
    case QMetaType::QDateTime:
        return sameDateTime(left.toDateTime(), right.toDateTime());
    case QMetaType::QIcon: // icons have no comparison of their own
        return left.value<QIcon>().cacheKey() == right.value<QIcon>().cacheKey();
    default:
        return left == right;
    }
}

int storedCellRole(int role)
{
    return role == Qt::EditRole ? int(Qt::UserRole) : role;
}

void CellChanges::add(int row, int column, int role)
{
    if (m_changes.isEmpty() || m_changes.last().lastRow != row)
        m_changes.append({row, row, column, column, {}});
    Change &change = m_changes.last();
    change.firstColumn = qMin(change.firstColumn, column);
    change.lastColumn = qMax(change.lastColumn, column);
    insertRole(change.roles, role);
    if (role == Qt::UserRole)
        insertRole(change.roles, Qt::EditRole);
}

QVector<CellChanges::Change> CellChanges::merged() const
{
    QVector<Change> runs;
    for (const Change &change : m_changes) {
        if (!runs.isEmpty() && continues(runs.last(), change))
            runs.last().lastRow = change.lastRow;
        else
            runs.append(change);
    }
    if (runs.size() <= MostChanges)
        return runs;
    Change all = runs.first();
    for (const Change &run : qAsConst(runs))
        unite(all, run);
    return {all};
}
