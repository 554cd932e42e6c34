#include "Road.h"

#include "Hands.h"
#include "MainWindow.h"
#include "Workbench.h"
#include "panels/EditorPanel.h"
#include "panels/SceneObjectView.h"

#include <ModalAnswer.h>
#include <WindowFocus.h>
#include <kernel/document/Document.h>
#include <nkKernelServices/nkPlatformService.h>
#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>
#include <nkKernelServicesGUI/nkBaseControl.h>
#include <nkKernelServicesGUI/nkPropertyEditorWidget.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMenu>

Road::Road()
{
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
    forgetProgramData();
}

Road::~Road()
{
    stop();
}

QString Road::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        Hands::fail(QStringLiteral("cannot write ") + name);
    }
    return file.fileName();
}

QByteArray Road::read(const QString &name) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::ReadOnly)) {
        Hands::fail(QStringLiteral("there is no file ") + name);
    }
    return file.readAll();
}

void Road::expect(const QString &name, const QByteArray &expected) const
{
    const QByteArray found = read(name);
    if (found != expected) {
        int at = 0;
        while (at < found.size() && at < expected.size() && found.at(at) == expected.at(at)) {
            ++at;
        }
        const int from = qMax(0, at - 40);
        Hands::fail(QStringLiteral("%1 differs at byte %2: found\n%3\nexpected\n%4")
                        .arg(name, QString::number(at), QString::fromUtf8(found.mid(from, 1600)),
                             QString::fromUtf8(expected.mid(from, 1600))));
    }
}

void Road::forgetProgramData()
{
    QDir data(nkPlatformService::the().getUserDataDirectory());
    QDir(data.filePath(QStringLiteral("recovery"))).removeRecursively();
    data.remove(QStringLiteral("assets.sqlite"));
}

void Road::start(const QString &name)
{
    m_workbench = std::make_unique<Workbench>();
    m_workbench->loadPlugins();
    if (!name.isEmpty()) {
        QCOMPARE(m_workbench->open(path(name)), QString());
    }
    m_workbench->show();
    window()->activateWindow();
    QVERIFY(WindowFocus::waitFor(window()));
    QTRY_VERIFY(upper() && upper()->isVisible());
}

void Road::stop()
{
    if (m_workbench) {
        // Nobody asks at the end of a test.
        kernel::Document::the().markSaved();
        m_workbench.reset();
    }
}

MainWindow *Road::window() const
{
    return m_workbench ? m_workbench->window() : nullptr;
}

QWidget *Road::editor() const
{
    const QList<QMainWindow *> windows = window()->findChildren<QMainWindow *>();
    for (QMainWindow *candidate : windows) {
        if (candidate->inherits("nkMetadataEditorModule")) {
            return candidate;
        }
    }
    return nullptr;
}

QAbstractItemView *Road::view(const char *className, int number) const
{
    const QWidget *place = editor();
    const auto views = place ? place->findChildren<QAbstractItemView *>() : QList<QAbstractItemView *>();
    QList<QAbstractItemView *> found;
    for (QAbstractItemView *candidate : views) {
        if (candidate->inherits(className)) {
            found.append(candidate);
        }
    }
    const auto isAbove = [](const QWidget *a, const QWidget *b) {
        return a->mapToGlobal(QPoint()).y() < b->mapToGlobal(QPoint()).y();
    };
    std::sort(found.begin(), found.end(), isAbove);
    return found.value(number);
}

QAbstractItemView *Road::upper() const
{
    return view("nkMetadataTreeView", 0);
}

QAbstractItemView *Road::lower() const
{
    return view("nkMetadataTreeView", 1);
}

QAbstractItemView *Road::table() const
{
    return view("nkMetadataKeyValueTreeView");
}

QLineEdit *Road::searchField() const
{
    const auto *bar = editor()->findChild<nkAdvancedSearchBar *>();
    return bar ? bar->lineEdit() : nullptr;
}

QLineEdit *Road::valueField() const
{
    const auto *shown = editor()->findChild<nkPropertyEditorWidget *>();
    const nkBaseControl *control = shown ? shown->getControl(QStringLiteral("value")) : nullptr;
    return control ? control->findChild<QLineEdit *>() : nullptr;
}

QWidget *Road::button(const QString &text) const
{
    const auto buttons = window()->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        if (button->isVisible() && QString(button->text()).remove(QLatin1Char('&')) == text) {
            return button;
        }
    }
    return nullptr;
}

EditorPanel *Road::panel(int module) const
{
    return window()->panels().at(module);
}

QAbstractItemView *Road::objects(int module) const
{
    return panel(module)->view();
}

void Road::open(const QString &name)
{
    const ModalAnswer answer([this, name](QDialog *dialog) { typeName(dialog, name); });
    Hands::press(Qt::Key_O, Qt::ControlModifier);
}

void Road::save()
{
    Hands::press(Qt::Key_S, Qt::ControlModifier);
}

void Road::saveAs(const QString &name)
{
    const ModalAnswer answer([this, name](QDialog *dialog) { typeName(dialog, name); });
    Hands::press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
}

void Road::undo(int steps)
{
    for (int i = 0; i < steps; ++i) {
        Hands::press(Qt::Key_Z, Qt::ControlModifier);
    }
}

void Road::editValue(const QString &key, const QString &value)
{
    const QModelIndex keyCell = Hands::cell(table(), key, 2);
    if (keyCell.isValid()) {
        const QModelIndex cell = keyCell.sibling(keyCell.row(), 3);
        Hands::doubleClickAt(table()->viewport(), table()->visualRect(cell).center());
        Hands::retype(value);
        Hands::press(Qt::Key_Return);
    }
}

void Road::createEntry(const QString &kind, const QString &key, const QString &value)
{
    menuKey({QStringLiteral("Create Entry"), kind});
    Hands::retype(key);
    if (!value.isEmpty()) {
        Hands::press(Qt::Key_Tab);
        Hands::retype(value);
    }
    Hands::press(Qt::Key_Return);
}

void Road::menuKey(const QStringList &entries)
{
    const ModalAnswer walk = ModalAnswer::menu([entries](QMenu *) { Hands::chooseByKeys(entries); });
    Hands::pressMenuKey();
    // Some menus run an event loop of their own while they are open, others need one to be walked.
    if (!QTest::qWaitFor([&walk] { return walk.given() || QTest::currentTestFailed(); })) {
        Hands::fail(QStringLiteral("no menu has opened"));
    }
}

void Road::typeName(QDialog *dialog, const QString &name) const
{
    auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (!field || !WindowFocus::waitFor(dialog)) {
        Hands::fail(QStringLiteral("no file dialog has opened"));
        dialog->reject();
        return;
    }
    // Letter by letter it would offer completions, in a list that is filled and shown by a thread of its own.
    field->setText(path(name));
    field->setFocus();
    Hands::press(Qt::Key_Return);
    if (QTest::currentTestFailed()) {
        dialog->reject();
    }
}
