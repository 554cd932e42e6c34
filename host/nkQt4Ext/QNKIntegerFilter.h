#pragma once

#include "QNKItemFilter.h"

#include <QList>

/// A filter by a list of numbers; what a row's numbers are, subclasses say.
class NK_QT4EXT_EXPORT QNKIntegerFilter : public QNKItemFilter
{
    Q_OBJECT
public:
    explicit QNKIntegerFilter(QObject *parent = nullptr);
    ~QNKIntegerFilter() override;

    QList<int> integers() const { return m_integers; }
    /// An empty list accepts every row.
    void setIntegers(const QList<int> &integers);

    bool accepts(const QModelIndex &sourceIndex) const override;

protected:
    /// Whether the row passes one of integers() (never empty here).
    virtual bool acceptsIntegers(const QModelIndex &sourceIndex) const = 0;

private:
    QList<int> m_integers;
};
