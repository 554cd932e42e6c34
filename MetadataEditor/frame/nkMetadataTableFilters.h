#pragma once

#include <QList>
#include <QObject>

class QNKFilterBar;
class QNKSearchBox;
class QWidget;
class nkMetadataTableFilterModel;

/// The filter fields of the key/value table, one a column, wired to the table's filter model.
class nkMetadataTableFilters : public QObject
{
    Q_OBJECT
public:
    /// Makes the widgets as children of row and connects them to the model. @param row owns the widgets
    nkMetadataTableFilters(nkMetadataTableFilterModel *model, QWidget *row);
    ~nkMetadataTableFilters() override;

    /// In the order of the columns.
    QList<QWidget *> widgets() const;
    /// Empties the filter of a column; the other columns' numbers are ignored.
    void clear(int column);

private:
    QNKSearchBox *createSearchBox(QWidget *row,
                                  void (nkMetadataTableFilterModel::*setFilter)(const QString &));

    nkMetadataTableFilterModel *m_model;
    QNKFilterBar *m_stateFilter = nullptr;
    QNKSearchBox *m_nameFilter = nullptr;
    QNKSearchBox *m_keyFilter = nullptr;
    QNKSearchBox *m_valueFilter = nullptr;
    QNKFilterBar *m_typeFilter = nullptr;
};
