#pragma once

#include <QVariant>
#include <QVector>

/// Whether two cell values are the same: type first, since QVariant compares converting ("1" == 1), and two
/// NaN are the same. Values of types that cannot be compared never are.
bool isSameCellValue(const QVariant &left, const QVariant &right);

/// The role a value is kept under: what is edited is the cell's edit datum.
int storedCellRole(int role);

/// The cells that changed in neighbouring rows of one parent, merged into few announcements.
class CellChanges
{
public:
    struct Change
    {
        int firstRow;
        int lastRow;
        int firstColumn;
        int lastColumn;
        QVector<int> roles; // sorted
    };

    /// A cell of a row changed; rows come in ascending order.
    void add(int row, int column, int role);
    bool isEmpty() const { return m_changes.isEmpty(); }
    /// One change for each run of rows with the same cells; where that were too many, one over all: every
    /// announcement makes a sorting proxy move rows about.
    QVector<Change> merged() const;

private:
    QVector<Change> m_changes; // one a row
};
