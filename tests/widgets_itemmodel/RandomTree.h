#pragma once

#include <QAbstractItemModel>
#include <QRandomGenerator>

#include <memory>
#include <vector>

/// A tree of two columns, a text and a number, that changes itself at random and announces each change as models
/// do: rows that come, go and move, data of one row, of a range, and of many rows one announcement after the other
/// while all hold their new data already, new layouts and resets.
class RandomTree : public QAbstractItemModel
{
    Q_OBJECT
public:
    struct Row
    {
        QString text;
        int number = 0;
        Row *above = nullptr;
        std::vector<std::unique_ptr<Row>> rows;
    };

    /// @param isFlat without children of children
    RandomTree(quint32 seed, bool isFlat, QObject *parent = nullptr);
    ~RandomTree() override;

    /// One change. @return its name
    QString change();
    QRandomGenerator &random() { return m_random; }
    const Row &root() const { return m_root; }
    QString anyText();

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    Row &rowAt(const QModelIndex &index) const;

private:
    int below(int bound) { return int(m_random.bounded(bound)); }
    QModelIndex anyParent();
    QModelIndex indexOf(const Row &row, int column = 0) const;
    std::unique_ptr<Row> makeRow(Row *above, int depth);
    void fill(Row &row);
    void insert();
    void remove();
    void changeOne();
    void changeRange();
    void changeManyThenTell();
    void move();
    void shuffle();
    void startAnew();

    mutable Row m_root;
    QRandomGenerator m_random;
    bool m_isFlat;
};
