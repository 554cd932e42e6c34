#include "TableFixture.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkObjectService.h>

#include <QAbstractButton>

using namespace nkMetadataKeyValue;

/// Edits during which the table is reloaded, emptied or filled with something else: from every announcement
/// of the host, from the rename question, and from the model's own signals.
class TestReentrancy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_table = std::make_unique<TableFixture>();
        m_table->show({m_table->alpha, m_table->beta});
    }
    void cleanup() { m_table.reset(); }

    void edits_outlive_what_the_host_brings_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("disturbance");
        const QStringList columns{"colour", "assignment", "key", "value", "type"};
        const QStringList disturbances{"reload", "other sets", "no sets", "set deleted"};
        for (int column = 0; column < columns.size(); ++column) {
            for (int i = 0; i < disturbances.size(); ++i) {
                QTest::addRow("%s, %s", qPrintable(columns.at(column)), qPrintable(disturbances.at(i)))
                    << column << i;
            }
        }
    }
    void edits_outlive_what_the_host_brings()
    {
        QFETCH(int, column);
        QFETCH(int, disturbance);
        QObject context;
        connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, &context,
                [&] { disturb(disturbance); });
        connect(&nkObjectService::the(), &nkObjectService::propertyChanged, &context,
                [&] { disturb(disturbance); });
        const nkdMetadataEntry count = TableFixture::entry(m_table->alpha, "count");
        const int role = column == IconColumn ? int(ColorRole) : int(Qt::UserRole);
        m_table->model->setData(m_table->cell(count, column), valueFor(column), role);
        context.disconnect();
        QCOMPARE(TableFixture::entry(m_table->beta, "name").getValue(), QVariant(QStringLiteral("second")));
        if (disturbance < 3) {
            QVERIFY(isWritten(count, column));
        }
    }

    void edits_outlive_a_reload_from_the_models_own_signals()
    {
        const auto reload = [this] { m_table->model->reload(); };
        bool isInside = false;
        QObject context;
        connect(m_table->model.get(), &QAbstractItemModel::dataChanged, &context, [&] {
            if (!isInside) {
                isInside = true;
                reload();
                isInside = false;
            }
        });
        const nkdMetadataEntry count = TableFixture::entry(m_table->alpha, "count");
        m_table->model->setData(m_table->cell(count, ValueColumn), 8, Qt::UserRole);
        QCOMPARE(m_table->cell(count, ValueColumn).data().toString(), QStringLiteral("8"));
    }

    void the_rename_question_outlives_a_reload_data()
    {
        QTest::addColumn<int>("disturbance");
        QTest::addColumn<bool>("replaces");
        const QStringList disturbances{"reload", "other sets", "no sets", "set deleted"};
        for (int i = 0; i < disturbances.size(); ++i) {
            QTest::addRow("%s, Replace", qPrintable(disturbances.at(i))) << i << true;
            QTest::addRow("%s, Cancel", qPrintable(disturbances.at(i))) << i << false;
        }
    }
    void the_rename_question_outlives_a_reload()
    {
        QFETCH(int, disturbance);
        QFETCH(bool, replaces);
        const ModalAnswer answer([&](QDialog *dialog) {
            disturb(disturbance);
            press(dialog, replaces);
        });
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        m_table->model->setData(m_table->cell(name, KeyColumn), QStringLiteral("count"), Qt::UserRole);
        QVERIFY(answer.given());
        if (disturbance < 3) {
            const QStringList replaced{"count", "checked"};
            const QStringList kept{"name", "count", "checked"};
            QCOMPARE(TableFixture::keys(m_table->alpha), replaces ? replaced : kept);
        }
        if (disturbance == 0) {
            QCOMPARE(m_table->cell(name, KeyColumn).data(Qt::UserRole).toString(),
                     replaces ? QStringLiteral("count") : QStringLiteral("name"));
        }
    }

    void replace_overwrites_nothing_when_the_edited_entry_is_gone()
    {
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        const ModalAnswer answer([&](QDialog *dialog) {
            m_table->alpha.getEntries().remove(name);
            press(dialog, true);
        });
        m_table->model->setData(m_table->cell(name, KeyColumn), QStringLiteral("count"), Qt::UserRole);
        QVERIFY(answer.given());
        QCOMPARE(TableFixture::keys(m_table->alpha), (QStringList{"count", "checked"}));
        QCOMPARE(TableFixture::entry(m_table->alpha, "count").getValue(), QVariant(7));
    }

    void replace_overwrites_nothing_when_the_set_was_locked()
    {
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        const ModalAnswer answer([&](QDialog *dialog) {
            m_table->alpha.setLocked(true);
            press(dialog, true);
        });
        m_table->model->setData(m_table->cell(name, KeyColumn), QStringLiteral("count"), Qt::UserRole);
        QVERIFY(answer.given());
        QCOMPARE(TableFixture::keys(m_table->alpha), (QStringList{"name", "count", "checked"}));
        QCOMPARE(m_table->cell(name, KeyColumn).data(Qt::UserRole).toString(), QStringLiteral("name"));
    }

    void replace_needs_nobody_where_the_key_became_free()
    {
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        const ModalAnswer answer([&](QDialog *dialog) {
            TableFixture::entry(m_table->alpha, "count").setKey(QStringLiteral("amount"));
            press(dialog, true);
        });
        m_table->model->setData(m_table->cell(name, KeyColumn), QStringLiteral("count"), Qt::UserRole);
        QVERIFY(answer.given());
        QCOMPARE(TableFixture::keys(m_table->alpha), (QStringList{"count", "amount", "checked"}));
    }

private:
    void disturb(int disturbance)
    {
        if (m_isDisturbing) {
            return;
        }
        m_isDisturbing = true;
        switch (disturbance) {
        case 0:
            m_table->model->reload();
            break;
        case 1:
            m_table->show({m_table->beta});
            break;
        case 2:
            m_table->show({});
            break;
        default:
            nkMetadataService::the().deleteSets({m_table->alpha});
            m_table->model->reload();
        }
        m_isDisturbing = false;
    }

    static QVariant valueFor(int column)
    {
        switch (column) {
        case IconColumn:
            return QColor(Qt::green);
        case TypeColumn:
            return QVariant::fromValue(nkMetadataTypes::String);
        case ValueColumn:
            return 8;
        default:
            return QStringLiteral("renamed");
        }
    }

    bool isWritten(const nkdMetadataEntry &entry, int column) const
    {
        switch (column) {
        case IconColumn:
            return m_table->alpha.getColor() == QColor(Qt::green);
        case KeyColumn:
            return entry.getKey() == QLatin1String("renamed");
        case ValueColumn:
            return entry.getValue() == QVariant(8);
        case TypeColumn:
            return entry.getValueType() == nkMetadataTypes::String;
        default:
            return m_table->alpha.getName() == QLatin1String("Alpha");
        }
    }

    static void press(QDialog *dialog, bool replaces)
    {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        const QList<QAbstractButton *> buttons = box->buttons();
        for (QAbstractButton *button : buttons) {
            if ((button->text() == QLatin1String("Replace")) == replaces) {
                button->click();
                return;
            }
        }
    }

    std::unique_ptr<TableFixture> m_table;
    bool m_isDisturbing = false;
};

NK_TEST_MAIN(TestReentrancy)
#include "test_reentrancy.moc"
