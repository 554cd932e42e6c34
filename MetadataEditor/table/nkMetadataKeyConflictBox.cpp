#include "table/nkMetadataKeyConflictBox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

nkMetadataKeyConflictBox::Answer nkMetadataKeyConflictBox::ask()
{
    QMessageBox box(QMessageBox::Warning, QCoreApplication::translate("Metadata", "Change key name"),
                    QCoreApplication::translate("Metadata",
                                                "The key name is already assigned.\n"
                                                "Press \"Cancel\" for no change. "
                                                "Press \"Replace\" to overwrite the existing entry."),
                    QMessageBox::Cancel);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Cancel);
    const QPushButton *replace = box.addButton(QCoreApplication::translate("Metadata", "Replace"),
                                               QMessageBox::AcceptRole);
    box.exec();
    return box.clickedButton() == replace ? Replace : Cancel;
}
