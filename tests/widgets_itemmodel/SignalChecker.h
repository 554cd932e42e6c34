#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QPersistentModelIndex>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

/// Keeps a copy of a model by its signals alone and finds where the copy and the model part: a change that was
/// not announced, or announced wrongly. Sharper than QAbstractItemModelTester, which believes the model.
///
/// Every row is watched by a persistent index too, so that a row which changes its place without its indexes
/// is found.
class SignalChecker : public QObject
{
    Q_OBJECT
public:
    /// @param roles the data that is compared, in every column
    explicit SignalChecker(QAbstractItemModel *model, const QVector<int> &roles = {Qt::DisplayRole},
                           QObject *parent = nullptr);
    ~SignalChecker() override;

    /// What is wrong so far, the model compared as a whole now; empty: nothing.
    QString fault();
    /// How often each signal came: "inserted", "removed", "moved", "data", "layout", "reset", "header".
    int count(const char *signal) const;
    void resetCounts() { m_signals.clear(); }
    /// Every signal that came, in order.
    QStringList signalsSeen() const { return m_signals; }

private:
    struct Node
    {
        QPersistentModelIndex index;      // column 0
        QVector<QVector<QVariant>> cells; // by column, then as in m_roles
        std::vector<std::unique_ptr<Node>> children;
    };

    void connectAll();
    void fail(const QString &what);
    Node *find(const QModelIndex &index);
    void read(Node &node, const QModelIndex &index);
    void readCells(Node &node, const QModelIndex &index);
    void compare(const Node &node, const QModelIndex &index, const QString &path);
    void insert(const QModelIndex &parent, int first, int last);
    void remove(const QModelIndex &parent, int first, int last);
    void move(const QModelIndex &from, int first, int last, const QModelIndex &to, int row);
    void change(const QModelIndex &first, const QModelIndex &last, const QVector<int> &roles);
    void layOut();
    void collect(Node &node, std::vector<std::unique_ptr<Node>> &nodes);
    void place(Node &above, const QModelIndex &index, QHash<QModelIndex, Node *> &known);
    void begin(const char *what);
    void end(const char *what);

    QAbstractItemModel *m_model;
    QVector<int> m_roles;
    Node m_root;
    QStringList m_signals;
    QString m_open; // the announcement between its begin and its end
    QString m_fault;
};
