#include "FileQuestions.h"

#include "BoxText.h"

#include <interchange/foreign/ForeignReaders.h>

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

namespace FileQuestions {

namespace {

/// Files named one by one; the others are counted.
constexpr int NamedFiles = 10;

QString tr(const char *text)
{
    return QCoreApplication::translate("FileQuestions", text);
}

/// A box with plain texts; never markup, whatever a file is called, and however long its name is.
class Box : public QMessageBox
{
public:
    Box(QWidget *window, Icon icon, const QString &text, const QString &more)
        : QMessageBox(icon, QGuiApplication::applicationDisplayName(), BoxText::elided(text), NoButton,
                      window)
    {
        setTextFormat(Qt::PlainText);
        setInformativeText(BoxText::elided(more));
    }
};

QString filter(const QString &name, const QStringList &suffixes)
{
    return QStringLiteral("%1 (*.%2)").arg(name, suffixes.join(QLatin1String(" *.")));
}

/// All kinds at once, and each of them.
QString sceneFilters()
{
    QStringList suffixes{QStringLiteral("gltf"), QStringLiteral("glb")};
    QStringList filters{filter(tr("glTF"), suffixes)};
    for (const auto &kind : interchange::ForeignReaders::kinds()) {
        filters.append(filter(kind.name, kind.suffixes));
        suffixes += kind.suffixes;
    }
    filters.prepend(filter(tr("3D scenes"), suffixes));
    filters.append(tr("All files (*)"));
    return filters.join(QStringLiteral(";;"));
}

/// What files with this suffix are called.
QString kindOf(const QString &suffix)
{
    for (const auto &kind : interchange::ForeignReaders::kinds()) {
        if (kind.suffixes.contains(suffix, Qt::CaseInsensitive)) {
            return kind.name;
        }
    }
    return tr("The same kind");
}

QString chosenFile(QFileDialog &dialog)
{
    const bool isChosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    return isChosen ? dialog.selectedFiles().constFirst() : QString();
}

} // namespace

Answer saveChanges(QWidget *window, const QString &title)
{
    Box box(window, QMessageBox::Question, tr("Save the changes to “%1”?").arg(title),
            tr("Without saving, they are lost."));
    box.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        return Answer::Save;
    case QMessageBox::Discard:
        return Answer::Discard;
    default:
        return Answer::Cancel;
    }
}

Answer overwriteChanged(QWidget *window, const QString &title)
{
    Box box(window, QMessageBox::Warning,
            tr("“%1” has been changed by another program since it was opened.").arg(title),
            tr("Overwriting it loses what the other program has changed."));
    const auto *overwrite = box.addButton(tr("&Overwrite"), QMessageBox::DestructiveRole);
    auto *saveAs = box.addButton(tr("Save &As..."), QMessageBox::AcceptRole);
    box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(saveAs);
    box.exec();
    if (box.clickedButton() == overwrite) {
        return Answer::Overwrite;
    }
    return box.clickedButton() == saveAs ? Answer::SaveAs : Answer::Cancel;
}

bool revert(QWidget *window, const QString &title)
{
    Box box(window, QMessageBox::Question, tr("Go back to “%1” as it was saved last?").arg(title),
            tr("All changes since then are lost, and cannot be brought back by Undo."));
    const auto *yes = box.addButton(tr("&Revert"), QMessageBox::DestructiveRole);
    box.setDefaultButton(box.addButton(QMessageBox::Cancel));
    box.exec();
    return box.clickedButton() == yes;
}

Answer restore(QWidget *window, const QString &title, const QString &more)
{
    Box box(window, QMessageBox::Question,
            tr("The workbench ended unexpectedly. Restore the unsaved changes to “%1”?").arg(title), more);
    auto *restore = box.addButton(tr("&Restore"), QMessageBox::AcceptRole);
    const auto *discard = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
    auto *later = box.addButton(tr("Ask &Later"), QMessageBox::RejectRole);
    box.setDefaultButton(restore);
    box.setEscapeButton(later);
    box.exec();
    if (box.clickedButton() == discard) {
        return Answer::Discard;
    }
    return box.clickedButton() == restore ? Answer::Restore : Answer::Cancel;
}

void tellLeftBehind(QWidget *window, const QStringList &files)
{
    QStringList named = files.mid(0, NamedFiles);
    if (files.size() > NamedFiles) {
        named.append(tr("and %1 more").arg(files.size() - NamedFiles));
    }
    Box box(window, QMessageBox::Information,
            tr("The scene was saved, but it needs files that stand beside the old one."),
            tr("Copy them into the folder of the new one:") + QStringLiteral("\n\n")
                + named.join(QLatin1Char('\n')));
    box.exec();
}

QString fileToOpen(QWidget *window, const QString &folder)
{
    // Dozens of suffixes make no readable list.
    return QFileDialog::getOpenFileName(window, tr("Open Scene"), folder, sceneFilters(), nullptr,
                                        QFileDialog::HideNameFilterDetails);
}

QString fileToSave(QWidget *window, const QString &path, bool isBinary)
{
    QFileDialog dialog(window, tr("Save Scene As"), QFileInfo(path).absolutePath());
    const QString binary = tr("Binary glTF (*.glb)");
    const QString text = tr("glTF (*.gltf)");
    dialog.setNameFilters(isBinary ? QStringList{binary} : QStringList{text, binary});
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(isBinary ? QStringLiteral("glb") : QStringLiteral("gltf"));
    QObject::connect(
        &dialog, &QFileDialog::filterSelected, &dialog, [&dialog, binary](const QString &filter) {
            dialog.setDefaultSuffix(filter == binary ? QStringLiteral("glb") : QStringLiteral("gltf"));
        });
    dialog.selectFile(QFileInfo(path).fileName());
    return chosenFile(dialog);
}

QString fileToCopyTo(QWidget *window, const QString &path)
{
    const QString suffix = QFileInfo(path).suffix();
    QFileDialog dialog(window, tr("Save Scene As"), QFileInfo(path).absolutePath());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    if (!suffix.isEmpty()) {
        dialog.setNameFilter(filter(kindOf(suffix), {suffix}));
        dialog.setDefaultSuffix(suffix);
    }
    dialog.selectFile(QFileInfo(path).fileName());
    return chosenFile(dialog);
}

} // namespace FileQuestions
