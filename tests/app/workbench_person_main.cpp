#include "MainWindow.h"
#include "PluginLoader.h"
#include "Workbench.h"

#include "kernel/document/Document.h"

#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QTextStream>

#include <cstdio>

// A person at a workbench of their own, told what to do by lines of the standard input: "open PATH", "do ACTION" with
// the text of an action of the editor, "set VALUE" and "value" of the one entry of the one set. Answers with "done",
// with the value, or with what the workbench has told the person.

namespace {

constexpr int patience = 5000;

nkdMetadataSet set()
{
    return nkMetadataService::the().getAllSets().value(0);
}

QAction *findAction(const QString &text)
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (const QWidget *widget : widgets) {
        const QList<QAction *> actions = widget->actions();
        for (QAction *action : actions) {
            if (action->text() == text) {
                return action;
            }
        }
    }
    return nullptr;
}

/// As a person does: with the set selected, and only what the menu offers.
QString trigger(const QString &text)
{
    nkMetadataService::the().setSelection({set()});
    QAction *action = findAction(text);
    QElapsedTimer time;
    time.start();
    while (action && !action->isEnabled() && time.elapsed() < patience) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    if (!action || !action->isEnabled()) {
        return action ? QStringLiteral("disabled") : QStringLiteral("no such action");
    }
    action->trigger();
    return QStringLiteral("done");
}

QString obey(Workbench &workbench, const QString &line)
{
    const QString what = line.section(QLatin1Char(' '), 0, 0);
    const QString with = line.section(QLatin1Char(' '), 1);
    const QString key = QStringLiteral("wood");
    if (what == QLatin1String("open")) {
        const QString error = workbench.open(with);
        return error.isEmpty() ? QStringLiteral("done") : error;
    }
    if (what == QLatin1String("set")) {
        set().setValue(key, with);
        return QStringLiteral("done");
    }
    return what == QLatin1String("do") ? trigger(with) : set().getValue(key).toString();
}

void work(Workbench &workbench)
{
    QString told;
    QObject::connect(
        &nkLogService::the(), &nkLogService::reported, &workbench,
        [&told](int level, const QString &, const QString &text) { told = level > 0 ? text : told; });
    QTextStream in(stdin);
    QTextStream out(stdout);
    out << "ready" << Qt::endl;
    for (QString line = in.readLine(); !line.isNull(); line = in.readLine()) {
        told.clear();
        const QString answer = obey(workbench, line);
        QCoreApplication::processEvents();
        for (QMessageBox *box : workbench.window()->findChildren<QMessageBox *>()) {
            box->close();
        }
        out << (told.isEmpty() ? answer : told) << Qt::endl;
    }
}

} // namespace

int main(int argc, char **argv)
{
    // Two workbenches of one computer: the same preferences and data, two people.
    const QByteArray place(argv[1]);
    qputenv("XDG_CONFIG_HOME", place + "/config");
    qputenv("XDG_DATA_HOME", place + "/data");
    qputenv("USER", argv[2]);
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("MetadataEditor"));
    QCoreApplication::setApplicationName(QStringLiteral("workbench"));
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.*=false"));
    PluginLoader plugins;
    {
        Workbench workbench;
        plugins.loadAll(QStringLiteral(PLUGINS));
        workbench.show();
        work(workbench);
        kernel::Document::the().markSaved();
    }
    plugins.unloadAll();
    return 0;
}
