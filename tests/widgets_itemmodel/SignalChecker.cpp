#include "SignalChecker.h"

SignalChecker::SignalChecker(QAbstractItemModel *model, const QVector<int> &roles, QObject *parent)
    : QObject(parent), m_model(model), m_roles(roles)
{
    read(m_root, {});
    connectAll();
}

SignalChecker::~SignalChecker() = default;

void SignalChecker::connectAll()
{
    using Model = QAbstractItemModel;
    connect(m_model, &Model::rowsAboutToBeInserted, this, [this](const QModelIndex &, int first, int last) {
        begin("inserted");
        if (first < 0 || last < first)
            fail(QStringLiteral("bad range"));
    });
    connect(m_model, &Model::rowsInserted, this, &SignalChecker::insert);
    connect(m_model, &Model::rowsAboutToBeRemoved, this, [this](const QModelIndex &, int first, int last) {
        begin("removed");
        if (first < 0 || last < first)
            fail(QStringLiteral("bad range"));
    });
    connect(m_model, &Model::rowsRemoved, this, &SignalChecker::remove);
    connect(m_model, &Model::rowsAboutToBeMoved, this, [this] { begin("moved"); });
    connect(m_model, &Model::rowsMoved, this, &SignalChecker::move);
    connect(m_model, &Model::dataChanged, this, &SignalChecker::change);
    connect(m_model, &Model::layoutAboutToBeChanged, this, [this] { begin("layout"); });
    connect(m_model, &Model::layoutChanged, this, &SignalChecker::layOut);
    connect(m_model, &Model::modelAboutToBeReset, this, [this] { begin("reset"); });
    connect(m_model, &Model::modelReset, this, [this] {
        end("reset");
        m_root = Node();
        read(m_root, {});
    });
    connect(m_model, &Model::headerDataChanged, this, [this] { m_signals.append(QStringLiteral("header")); });
}

QString SignalChecker::fault()
{
    if (m_fault.isEmpty() && !m_open.isEmpty())
        fail(QStringLiteral("an announcement never ended"));
    if (m_fault.isEmpty())
        compare(m_root, {}, QStringLiteral("root"));
    return m_fault;
}

int SignalChecker::count(const char *signal) const
{
    return m_signals.count(QLatin1String(signal));
}

void SignalChecker::fail(const QString &what)
{
    if (m_fault.isEmpty())
        m_fault = QStringLiteral("%1 (after %2)")
                      .arg(what, m_signals.mid(m_signals.size() - 5).join(QLatin1Char(' ')));
}

void SignalChecker::begin(const char *what)
{
    if (!m_open.isEmpty())
        fail(QStringLiteral("%1 begins inside %2").arg(QLatin1String(what), m_open));
    m_open = QLatin1String(what);
}

void SignalChecker::end(const char *what)
{
    if (m_open != QLatin1String(what))
        fail(QStringLiteral("%1 ends without its begin").arg(QLatin1String(what)));
    m_open.clear();
    m_signals.append(QLatin1String(what));
}

SignalChecker::Node *SignalChecker::find(const QModelIndex &index)
{
    if (!index.isValid())
        return &m_root;
    Node *above = find(index.parent());
    if (!above || index.row() >= int(above->children.size()))
        return nullptr;
    return above->children[size_t(index.row())].get();
}

void SignalChecker::read(Node &node, const QModelIndex &index)
{
    node.index = index;
    readCells(node, index);
    const int rows = m_model->rowCount(index);
    for (int row = 0; row < rows; ++row) {
        node.children.push_back(std::make_unique<Node>());
        read(*node.children.back(), m_model->index(row, 0, index));
    }
}

void SignalChecker::readCells(Node &node, const QModelIndex &index)
{
    node.cells.clear();
    if (!index.isValid())
        return;
    const int columns = m_model->columnCount(index.parent());
    for (int column = 0; column < columns; ++column) {
        QVector<QVariant> values;
        for (int role : m_roles)
            values.append(index.sibling(index.row(), column).data(role));
        node.cells.append(values);
    }
}

void SignalChecker::compare(const Node &node, const QModelIndex &index, const QString &path)
{
    if (QModelIndex(node.index) != index)
        fail(QStringLiteral("%1: the persistent index went elsewhere").arg(path));
    Node now;
    readCells(now, index);
    if (now.cells != node.cells)
        fail(QStringLiteral("%1: cells changed unannounced").arg(path));
    const int rows = m_model->rowCount(index);
    if (rows != int(node.children.size())) {
        fail(QStringLiteral("%1: %2 rows, %3 announced").arg(path).arg(rows).arg(node.children.size()));
        return;
    }
    for (int row = 0; row < rows && m_fault.isEmpty(); ++row) {
        const QModelIndex child = m_model->index(row, 0, index);
        if (child.parent() != index || child.row() != row)
            fail(QStringLiteral("%1: child %2 has another parent or row").arg(path).arg(row));
        compare(*node.children[size_t(row)], child, QStringLiteral("%1/%2").arg(path).arg(row));
    }
}

void SignalChecker::insert(const QModelIndex &parent, int first, int last)
{
    end("inserted");
    Node *above = find(parent);
    if (!above || first > int(above->children.size())) {
        fail(QStringLiteral("insertion at no place"));
        return;
    }
    for (int row = first; row <= last; ++row) {
        auto node = std::make_unique<Node>();
        read(*node, m_model->index(row, 0, parent));
        above->children.insert(above->children.begin() + row, std::move(node));
    }
    if (m_model->rowCount(parent) != int(above->children.size()))
        fail(QStringLiteral("insertion of another number of rows"));
}

void SignalChecker::remove(const QModelIndex &parent, int first, int last)
{
    end("removed");
    Node *above = find(parent);
    if (!above || last >= int(above->children.size())) {
        fail(QStringLiteral("removal at no place"));
        return;
    }
    const auto at = above->children.begin();
    for (int row = first; row <= last; ++row) {
        if (at[row]->index.isValid())
            fail(QStringLiteral("a removed row's persistent index is still valid"));
    }
    above->children.erase(at + first, at + last + 1);
    if (m_model->rowCount(parent) != int(above->children.size()))
        fail(QStringLiteral("removal of another number of rows"));
}

void SignalChecker::move(const QModelIndex &, int, int, const QModelIndex &, int)
{
    end("moved");
    layOut();
}

void SignalChecker::change(const QModelIndex &first, const QModelIndex &last, const QVector<int> &roles)
{
    m_signals.append(QStringLiteral("data"));
    if (!m_open.isEmpty())
        fail(QStringLiteral("data inside %1").arg(m_open));
    Node *above = first.isValid() && last.isValid() ? find(first.parent()) : nullptr;
    if (!above || first.parent() != last.parent() || last.row() >= int(above->children.size())
        || first.row() > last.row() || first.column() > last.column()) {
        fail(QStringLiteral("data changed at no place"));
        return;
    }
    for (int row = first.row(); row <= last.row(); ++row) {
        for (int column = first.column(); column <= last.column(); ++column) {
            for (int i = 0; i < m_roles.size(); ++i) {
                if (roles.isEmpty() || roles.contains(m_roles[i]))
                    above->children[size_t(row)]->cells[column][i] =
                        first.sibling(row, column).data(m_roles[i]);
            }
        }
    }
}

/// After a new layout every row stands where its persistent index says; rows may have come and gone as well
/// (a sort-filter proxy that is invalidated does that).
void SignalChecker::layOut()
{
    if (m_open == QLatin1String("layout"))
        end("layout");
    std::vector<std::unique_ptr<Node>> nodes;
    collect(m_root, nodes);
    QHash<QModelIndex, Node *> byPlace;
    for (const std::unique_ptr<Node> &node : nodes) {
        if (node->index.isValid())
            byPlace.insert(QModelIndex(node->index), node.get());
    }
    place(m_root, {}, byPlace);
    if (!byPlace.isEmpty())
        fail(QStringLiteral("a row was laid out at no place"));
}

void SignalChecker::collect(Node &node, std::vector<std::unique_ptr<Node>> &nodes)
{
    for (std::unique_ptr<Node> &child : node.children) {
        collect(*child, nodes);
        nodes.push_back(std::move(child));
    }
    node.children.clear();
}

/// Builds the copy anew along the model, with the known cells where persistent indexes name a row.
void SignalChecker::place(Node &above, const QModelIndex &index, QHash<QModelIndex, Node *> &known)
{
    const int rows = m_model->rowCount(index);
    for (int row = 0; row < rows; ++row) {
        const QModelIndex child = m_model->index(row, 0, index);
        above.children.push_back(std::make_unique<Node>());
        Node &node = *above.children.back();
        node.index = child;
        if (const Node *before = known.take(child))
            node.cells = before->cells;
        else
            readCells(node, child);
        place(node, child, known);
    }
}
