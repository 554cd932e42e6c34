#include "TableFixture.h"

#include "table/nkMetadataRowHandles.h"

#include <TestMain.h>
#include <nkKernelServices/nkMetadataEntryMime.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QBrush>
#include <QIcon>
#include <QMimeData>
#include <QPalette>

using namespace nkMetadataKeyValue;

class TestKeyValueModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_table = std::make_unique<TableFixture>(); }
    void cleanup() { m_table.reset(); }

    void lists_set_after_set_and_entries_in_their_order()
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        QList<nkdMetadataSet> sets;
        QStringList expected;
        for (const QString &name : {QStringLiteral("Z"), QStringLiteral("A")}) {
            sets.append(nkdMetadataSet(loader.addSet(name)));
            for (int i = 9; i >= 0; --i) {
                loader.addEntry(sets.last().getObjectId(), QStringLiteral("k%1").arg(i),
                                nkMetadataTypes::Integer, i);
                expected.append(QStringLiteral("%1 k%2").arg(name).arg(i));
            }
        }
        loader.commit();
        m_table->show(sets);
        QStringList shown;
        for (int row = 0; row < m_table->model->rowCount(); ++row) {
            shown.append(m_table->text(row, AssignmentColumn) + QLatin1Char(' ')
                         + m_table->text(row, KeyColumn));
        }
        QCOMPARE(shown, expected);
    }

    void answers_every_cell()
    {
        m_table->show({m_table->alpha});
        const QAbstractItemModel &model = *m_table->model;
        QCOMPARE(model.index(1, AssignmentColumn).data().toString(), QStringLiteral("Alpha"));
        QCOMPARE(model.index(1, KeyColumn).data().toString(), QStringLiteral("count"));
        QCOMPARE(model.index(1, KeyColumn).data(Qt::UserRole), QVariant(QStringLiteral("count")));
        QCOMPARE(model.index(1, ValueColumn).data().toString(), QStringLiteral("7"));
        QCOMPARE(model.index(1, ValueColumn).data(Qt::UserRole).userType(), int(QMetaType::Int));
        QCOMPARE(model.index(1, ValueColumn).data(Qt::EditRole), QVariant(7));
        QCOMPARE(model.index(1, TypeColumn).data().toString(), QStringLiteral("Integer"));
        QCOMPARE(model.index(1, TypeColumn).data(Qt::UserRole).value<nkMetadataTypes::ValueType>(),
                 nkMetadataTypes::Integer);
        QCOMPARE(model.index(1, IconColumn).data(ColorRole).value<QColor>(), QColor(255, 0, 0));
        QVERIFY(!model.index(1, IconColumn).data().isValid());
        QVERIFY(!model.index(1, IconColumn).data(Qt::DecorationRole).value<QIcon>().isNull());
        QVERIFY(!model.index(1, KeyColumn).data(Qt::DecorationRole).isValid());
    }

    void carries_its_handles_in_the_assignment_column()
    {
        m_table->show({m_table->beta});
        const QModelIndex cell = m_table->model->index(0, AssignmentColumn);
        QCOMPARE(cell.data(SetRole).userType(), qMetaTypeId<nkdMetadataSet>());
        QCOMPARE(cell.data(EntryRole).userType(), qMetaTypeId<nkdMetadataEntry>());
        QCOMPARE(nkMetadataRowHandles::set(cell.siblingAtColumn(TypeColumn)), m_table->beta);
        QCOMPARE(nkMetadataRowHandles::entry(cell), TableFixture::entry(m_table->beta, "name"));
        QVERIFY(nkMetadataRowHandles::set(QModelIndex()).isNull());
        QVERIFY(!m_table->model->index(0, KeyColumn).data(SetRole).isValid());
    }

    void identifies_rows_by_their_entry()
    {
        m_table->show({m_table->alpha, m_table->beta});
        const nkdMetadataEntry entry = TableFixture::entry(m_table->beta, "name");
        QCOMPARE(m_table->model->indexFromId(entry.getObjectId(), 2), m_table->model->index(3, 2));
    }

    void takes_a_new_list_of_sets_with_the_next_reload()
    {
        m_table->show({m_table->alpha});
        m_table->root->setSets({m_table->beta});
        QCOMPARE(m_table->model->rowCount(), 3);
        m_table->model->reload();
        QCOMPARE(m_table->column(KeyColumn), QStringList{"name"});
    }

    void keeps_a_list_that_shares_its_data()
    {
        const QList<nkdMetadataSet> sets{m_table->alpha};
        m_table->root->setSets(sets);
        m_table->root->setSets(m_table->root->sets());
        QVERIFY(m_table->root->sets().isSharedWith(sets));
    }

    void adds_sets_that_are_not_shown_yet_in_order()
    {
        m_table->show({m_table->beta});
        m_table->root->addSets({m_table->alpha, m_table->beta, m_table->locked, m_table->alpha});
        QCOMPARE(m_table->root->sets(),
                 (QList<nkdMetadataSet>{m_table->beta, m_table->alpha, m_table->locked}));
        m_table->root->setSets({m_table->locked});
        m_table->root->addSets({m_table->locked, m_table->beta});
        QCOMPARE(m_table->root->sets(), (QList<nkdMetadataSet>{m_table->locked, m_table->beta}));
    }

    void makes_rows_of_a_set_once()
    {
        m_table->show({m_table->beta, m_table->alpha, m_table->beta});
        QCOMPARE(m_table->model->rowCount(), 4);
    }

    void skips_null_and_dead_sets()
    {
        nkMetadataService::the().deleteSets({m_table->beta});
        m_table->show({nkdMetadataSet(), m_table->beta, m_table->alpha});
        QCOMPARE(m_table->model->rowCount(), 3);
    }

    void ignores_a_missing_root()
    {
        m_table->show({m_table->alpha});
        m_table->model->setRootItem(nullptr);
        QCOMPARE(m_table->model->rowCount(), 3);
        QCOMPARE(m_table->root->getClassName().toString(), QStringLiteral("nkMetadataKeyValueRootModelItem"));
    }

    void edits_of_a_tag_reach_key_and_colour_alone()
    {
        m_table->show({m_table->alpha});
        const nkdMetadataEntry tag = TableFixture::entry(m_table->alpha, "checked");
        for (int column = 0; column < ColumnCount; ++column) {
            const bool isEditable = column != ValueColumn && column != TypeColumn;
            QCOMPARE(bool(m_table->cell(tag, column).flags() & Qt::ItemIsEditable), isEditable);
        }
        QVERIFY(!m_table->model->setData(m_table->cell(tag, ValueColumn), 1, Qt::UserRole));
        QCOMPARE(m_table->text(2, ValueColumn), QString());
    }

    void rows_of_a_set_that_is_not_editable_are_grey_and_closed()
    {
        m_table->show({m_table->locked, m_table->alpha});
        const QPalette palette = QApplication::palette();
        for (int column = 0; column < ColumnCount; ++column) {
            const QModelIndex closed = m_table->model->index(0, column);
            QVERIFY(!(closed.flags() & Qt::ItemIsEditable));
            QCOMPARE(foreground(closed), palette.color(QPalette::Disabled, QPalette::Text));
            const QModelIndex open = m_table->model->index(1, column);
            QVERIFY(open.flags() & Qt::ItemIsEditable);
            QCOMPARE(foreground(open), palette.color(QPalette::Current, QPalette::Text));
        }
        QVERIFY(!m_table->model->itemFromIndex(m_table->model->index(0, 0))->isEditable());
        QVERIFY(m_table->model->itemFromIndex(m_table->model->index(1, 0))->isEditable());
    }

    void takes_the_colours_of_the_active_window()
    {
        QWidget window;
        QPalette palette = window.palette();
        palette.setColor(QPalette::Text, Qt::magenta);
        window.setPalette(palette);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        m_table->show({m_table->alpha});
        QCOMPARE(foreground(m_table->model->index(0, KeyColumn)), QColor(Qt::magenta));
    }

    void follows_the_lock_with_a_reload()
    {
        m_table->show({m_table->alpha});
        const QColor enabled = foreground(m_table->model->index(0, KeyColumn));
        m_table->alpha.setLocked(true);
        m_table->model->reload();
        QVERIFY(foreground(m_table->model->index(0, KeyColumn)) != enabled);
        QVERIFY(!(m_table->model->index(0, KeyColumn).flags() & Qt::ItemIsEditable));
    }

    void rows_are_dragged_and_take_no_drops()
    {
        m_table->show({m_table->alpha});
        const Qt::ItemFlags flags = m_table->model->index(0, KeyColumn).flags();
        QVERIFY(flags & Qt::ItemIsDragEnabled);
        QVERIFY(!(flags & Qt::ItemIsDropEnabled));
        QCOMPARE(m_table->model->supportedDragActions(), Qt::CopyAction);
        QCOMPARE(m_table->model->mimeTypes(), QStringList{"application/calyx-metadata-entry-item"});
    }

    void a_drag_carries_one_record_a_row()
    {
        m_table->show({m_table->alpha});
        QModelIndexList cells;
        for (int column = 0; column < ColumnCount; ++column) {
            cells << m_table->model->index(2, column) << m_table->model->index(1, column);
        }
        const std::unique_ptr<QMimeData> data(m_table->model->mimeData(cells));
        QDataStream stream(data->data(QStringLiteral("application/calyx-metadata-entry-item")));
        stream.setVersion(QDataStream::Qt_5_15);
        nkMetadataEntryMime count;
        nkMetadataEntryMime checked;
        stream >> count >> checked;
        QVERIFY(stream.atEnd());
        QCOMPARE(count.getKey(), QStringLiteral("count"));
        QCOMPARE(count.getValue(), QVariant(7));
        QVERIFY(checked.isTag());
    }

    void explains_every_column_in_its_tool_tip_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("text");
        QTest::newRow("icon") << 0 << QStringLiteral("Icon indicating Entry Type: Entry inside Set");
        QTest::newRow("assignment") << 1 << QStringLiteral("Assigned to: Alpha");
        QTest::newRow("key") << 2 << QStringLiteral("Metadata Key: count");
        QTest::newRow("value") << 3 << QStringLiteral("Metadata Value: 7");
        QTest::newRow("type") << 4 << QStringLiteral("Metadata Type: Integer");
    }
    void explains_every_column_in_its_tool_tip()
    {
        QFETCH(int, column);
        m_table->show({m_table->alpha});
        QTEST(m_table->model->index(1, column).data(Qt::ToolTipRole).toString(), "text");
    }

    void names_the_four_icons_in_their_tool_tip()
    {
        m_table->show({m_table->chairOwn, m_table->alpha});
        QStringList words;
        for (int row : {0, 1, 2, 4}) {
            words.append(m_table->model->index(row, IconColumn).data(Qt::ToolTipRole).toString());
        }
        const QString prefix = QStringLiteral("Icon indicating Entry Type: ");
        QCOMPARE(words, (QStringList{prefix + "Entry on Object", prefix + "Tag on Object",
                                     prefix + "Entry inside Set", prefix + "Tag inside Set"}));
    }

    void wraps_tool_tips_of_long_values_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("toolTip");
        const QString twenty = QStringLiteral("12345678901234567890");
        QTest::newRow("20") << twenty << QStringLiteral("Metadata Value: 12345678901234567890");
        QTest::newRow("21") << twenty + "1"
                            << QStringLiteral("<html><head/><body><p>Metadata Value: 123456789012345678901"
                                              "</p></body></html>");
        QTest::newRow("place holder") << QStringLiteral("%1 %2") << QStringLiteral("Metadata Value: %1 %2");
        QTest::newRow("long place holder")
            << QStringLiteral("%1 %2 %1 %2 %1 %2 %1 %2")
            << QStringLiteral("<html><head/><body><p>Metadata Value: %1 %2 %1 %2 %1 %2 %1 %2"
                              "</p></body></html>");
        QTest::newRow("long markup") << QStringLiteral("<img src=\"file:///x\"> & more")
                                     << QStringLiteral("<html><head/><body><p>Metadata Value: "
                                                       "&lt;img src=&quot;file:///x&quot;&gt; &amp; more"
                                                       "</p></body></html>");
    }
    void wraps_tool_tips_of_long_values()
    {
        QFETCH(QString, value);
        TableFixture::entry(m_table->alpha, "name").setValue(value);
        m_table->show({m_table->alpha});
        QTEST(m_table->model->index(0, ValueColumn).data(Qt::ToolTipRole).toString(), "toolTip");
    }

    void shows_short_markup_as_text()
    {
        TableFixture::entry(m_table->alpha, "name").setKey(QStringLiteral("<b>x</b>"));
        m_table->alpha.setName(QStringLiteral("<i>A</i>"));
        m_table->show({m_table->alpha});
        QCOMPARE(
            m_table->model->index(0, KeyColumn).data(Qt::ToolTipRole).toString(),
            QStringLiteral("<html><head/><body><p>Metadata Key: &lt;b&gt;x&lt;/b&gt;</p></body></html>"));
        QVERIFY(m_table->model->index(0, AssignmentColumn)
                    .data(Qt::ToolTipRole)
                    .toString()
                    .contains(QLatin1String("&lt;i&gt;A")));
    }

    void cuts_tool_tips_of_huge_values()
    {
        TableFixture::entry(m_table->alpha, "name").setValue(QString(1 << 20, QLatin1Char('x')));
        m_table->show({m_table->alpha});
        const QString toolTip = m_table->model->index(0, ValueColumn).data(Qt::ToolTipRole).toString();
        QVERIFY(toolTip.size() < 5000);
        QVERIFY(toolTip.contains(QChar(0x2026)));
        QCOMPARE(m_table->model->index(0, ValueColumn).data().toString().size(), 1 << 20);
    }

    void keeps_no_tool_tip_and_no_icon()
    {
        m_table->show({m_table->alpha});
        const QModelIndex cell = m_table->model->index(0, KeyColumn);
        const QString before = cell.data(Qt::ToolTipRole).toString();
        QCOMPARE(cell.data().toString(), QStringLiteral("name"));
        TableFixture::entry(m_table->alpha, "name").setKey(QStringLiteral("renamed"));
        QCOMPARE(cell.data(Qt::ToolTipRole).toString(), QStringLiteral("Metadata Key: renamed"));
        QVERIFY(before != cell.data(Qt::ToolTipRole).toString());
        QCOMPARE(cell.data().toString(), QStringLiteral("name"));
    }

    void outlives_what_it_shows()
    {
        m_table->show({m_table->alpha});
        nkMetadataService::the().deleteSets({m_table->alpha});
        const QModelIndex cell = m_table->model->index(1, ValueColumn);
        QVERIFY(!(cell.flags() & Qt::ItemIsEditable));
        QCOMPARE(cell.data().toString(), QString());
        QVERIFY(!m_table->model->setData(cell, 9, Qt::UserRole));
    }

private:
    static QColor foreground(const QModelIndex &cell)
    {
        return cell.data(Qt::ForegroundRole).value<QBrush>().color();
    }

    std::unique_ptr<TableFixture> m_table;
};

NK_TEST_MAIN(TestKeyValueModel)
#include "test_key_value_model.moc"
