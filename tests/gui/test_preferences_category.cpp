#include <TestMain.h>
#include <nkKernelServicesGUI/nkPreferencesCategory.h>
#include <nkKernelServicesGUI/nkRadioButtonWidget.h>

#include <QRadioButton>

namespace {

class Category : public nkPreferencesCategory
{
public:
    explicit Category(const QString &name, bool enrol = true) : nkPreferencesCategory(name)
    {
        if (enrol) {
            registerCategory();
        }
    }

    QWidget *getWidget() override { return nullptr; }
    void setDefaults(bool overwrite) override { calls.append(overwrite ? "overwrite" : "defaults"); }
    void loadToPage() override { calls.append("load"); }
    void storeFromPage() override { calls.append("store"); }
    void apply() override { calls.append(isChanged(QStringLiteral("Any key")) ? "apply all" : "apply none"); }
    void enrolAgain() { registerCategory(); }

    QStringList calls;
};

} // namespace

class TestPreferencesCategory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void categories_are_listed_in_order_while_they_live()
    {
        QVERIFY(nkPreferencesCategory::categories().isEmpty());
        const Category first(QStringLiteral("First"));
        {
            const Category second(QStringLiteral("Second"));
            QCOMPARE(names(), (QStringList{"First", "Second"}));
        }
        QCOMPARE(names(), QStringList{"First"});
    }

    void one_that_is_not_registered_is_not_listed()
    {
        const Category category(QStringLiteral("Quiet"), false);
        QVERIFY(nkPreferencesCategory::categories().isEmpty());
        QVERIFY(category.calls.isEmpty());
    }

    void registering_writes_missing_defaults_and_applies_every_key_once()
    {
        Category category(QStringLiteral("Category"));
        QCOMPARE(category.calls, (QStringList{"defaults", "apply all"}));
        category.apply();
        QCOMPARE(category.calls.last(), QStringLiteral("apply none"));
    }

    void registering_twice_counts_once()
    {
        Category category(QStringLiteral("Category"));
        category.enrolAgain();
        QCOMPARE(names(), QStringList{"Category"});
        QCOMPARE(category.calls.size(), 2);
    }

    void the_dialog_says_what_changed()
    {
        Category category(QStringLiteral("Category"));
        category.setChangedKeys({QStringLiteral("One")});
        QVERIFY(category.isChanged(QStringLiteral("One")));
        QVERIFY(!category.isChanged(QStringLiteral("Two")));
        category.setChangedKeys({});
        QVERIFY(!category.isChanged(QStringLiteral("One")));
    }

    void a_radio_button_stands_in_the_middle_of_its_cell()
    {
        QRadioButton *button = new QRadioButton;
        nkRadioButtonWidget cell(button);
        QCOMPARE(cell.button(), button);
        QCOMPARE(button->parentWidget(), &cell);
        QCOMPARE(cell.focusProxy(), button);
        cell.resize(200, 40);
        cell.show();
        QTRY_VERIFY(cell.isVisible());
        QVERIFY((button->geometry().center() - cell.rect().center()).manhattanLength() <= 2);
    }

    void a_radio_button_stands_out_in_cells_of_every_colour()
    {
        const QPalette before = QApplication::palette();
        QRadioButton *button = new QRadioButton;
        const nkRadioButtonWidget cell(button);
        QCOMPARE(button->palette().color(QPalette::Base), before.color(QPalette::Base));
        QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
        dark.setColor(QPalette::Base, QColor(35, 35, 35));
        QApplication::setPalette(dark);
        QVERIFY(button->palette().color(QPalette::Base).lightness() > 60);
        QApplication::setPalette(before);
        QCOMPARE(button->palette().color(QPalette::Base), before.color(QPalette::Base));
    }

private:
    static QStringList names()
    {
        QStringList names;
        for (const nkPreferencesCategory *category : nkPreferencesCategory::categories()) {
            names.append(category->getName());
        }
        return names;
    }
};

NK_TEST_MAIN(TestPreferencesCategory)
#include "test_preferences_category.moc"
