#pragma once

#include <nkQt4Ext/QNKItemModel.h>
#include <nkQt4Ext/QNKModelItem.h>

#include <QDataStream>
#include <QMimeData>

#include <functional>

/// What the rows of a test model show: the data they come from, changed by the test at will.
struct TestSource
{
    struct Row
    {
        quint64 id = 0;
        QString text;
        int number = 0;
        QVector<Row> children;
    };

    QVector<Row> rows;
    bool editable = true;

    // What the rows tell the test, and what the test has them do. Called with the row's id.
    std::function<void(quint64)> onLoadData;
    std::function<void(quint64)> onLoadChildren;
    std::function<void(quint64, int)> onUserDataChanged;
    std::function<void(quint64)> onMimeData;
    std::function<void()> onRootReload;
    int loads = 0;       // of cells
    int living = 0;      // row objects
    int nestedLoads = 0; // of children lists
};

/// A row of the test model: column 0 its text, column 1 its number. Child ids are the row's own id followed by
/// the parent's.
class TestRow : public QNKModelItem
{
public:
    TestRow(TestSource *source, const TestSource::Row &row, const QString &parentId = {})
        : m_source(source), m_row(row), m_parentId(parentId)
    {
        ++m_source->living;
        setEditable(m_source->editable);
        setDragEnabled(true);
    }
    ~TestRow() override { --m_source->living; }

    quint64 id() const { return m_row.id; }
    QString idText() const { return QString::number(m_row.id) + m_parentId; }

    bool hasChildren() const override { return !m_row.children.isEmpty(); }
    void loadChildren() override
    {
        ++m_source->nestedLoads;
        if (m_source->onLoadChildren)
            m_source->onLoadChildren(m_row.id);
        QList<QNKModelItem *> rows;
        for (const TestSource::Row &row : m_row.children)
            rows.append(new TestRow(m_source, row, idText()));
        setChildren(rows);
    }
    QVariant getId() const override
    {
        if (m_row.id == 0)
            return {};
        return m_parentId.isEmpty() ? QVariant(m_row.id) : QVariant(idText());
    }
    void userDataChanged(int, int column) override
    {
        if (m_source->onUserDataChanged)
            m_source->onUserDataChanged(m_row.id, column);
    }
    void getMimeData(QDataStream &stream) const override
    {
        if (m_source->onMimeData)
            m_source->onMimeData(m_row.id);
        stream << m_row.id;
    }

protected:
    QVariant loadData(int role, int column) const override
    {
        ++m_source->loads;
        if (m_source->onLoadData)
            m_source->onLoadData(m_row.id);
        if (role != Qt::DisplayRole && role != Qt::UserRole)
            return {};
        return column == 0 ? QVariant(m_row.text) : QVariant(m_row.number);
    }

private:
    TestSource *m_source;
    TestSource::Row m_row;
    QString m_parentId;
};

/// The root over a test source.
class TestRoot : public QNKModelItem
{
public:
    explicit TestRoot(TestSource *source) : m_source(source) {}

    void reload() override
    {
        if (m_source->onRootReload)
            m_source->onRootReload();
        QList<QNKModelItem *> rows;
        rows.reserve(m_source->rows.size());
        for (const TestSource::Row &row : m_source->rows)
            rows.append(new TestRow(m_source, row));
        setChildren(rows);
    }

private:
    TestSource *m_source;
};

/// A model with two columns over a test source.
class TestModel : public QNKItemModel
{
    Q_OBJECT
public:
    explicit TestModel(TestSource *source, QObject *parent = nullptr) : QNKItemModel(parent)
    {
        setHeader({QStringLiteral("Text"), QStringLiteral("Number")});
        setMimeType(QStringLiteral("application/x-test-rows"));
        setRootItem(new TestRoot(source));
        reload();
    }
};

/// Rows with these ids, each with the text "row ID" and its id as number.
inline QVector<TestSource::Row> testRows(const QVector<quint64> &ids)
{
    QVector<TestSource::Row> rows;
    for (quint64 id : ids)
        rows.append({id, QStringLiteral("row %1").arg(id), int(id), {}});
    return rows;
}
