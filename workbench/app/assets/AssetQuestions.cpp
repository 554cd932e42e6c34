#include "AssetQuestions.h"

#include <QCoreApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace {

QString words(const char *text)
{
    return QCoreApplication::translate("AssetQuestions", text);
}

} // namespace

bool AssetQuestions::mayEndCheckOut(QWidget *parent, const kernel::AssetInfo &asset)
{
    const QString text = words(QT_TRANSLATE_NOOP(
        "AssetQuestions", "“%1” is checked out by %2. When the check-out is ended, what was "
                          "changed there cannot be stored any more."));
    QMessageBox box(QMessageBox::Question, words(QT_TRANSLATE_NOOP("AssetQuestions", "End Check-Out")),
                    text.arg(asset.name, asset.holder), QMessageBox::Cancel, parent);
    box.setTextFormat(Qt::PlainText);
    const QPushButton *ending = box.addButton(words(QT_TRANSLATE_NOOP("AssetQuestions", "&End Check-Out")),
                                              QMessageBox::DestructiveRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == ending;
}

bool AssetQuestions::url(QWidget *parent, QString &url)
{
    bool isEntered = false;
    const QString entered = QInputDialog::getText(
        parent, words(QT_TRANSLATE_NOOP("AssetQuestions", "Asset Database")),
        words(QT_TRANSLATE_NOOP("AssetQuestions", "Connection URL of a PostgreSQL server, such as "
                                                  "postgresql://user@host/database;\n"
                                                  "empty for a database of your own:")),
        QLineEdit::Normal, url, &isEntered);
    url = entered.trimmed();
    return isEntered;
}

bool AssetQuestions::password(QWidget *parent, QString &password)
{
    bool isEntered = false;
    password = QInputDialog::getText(parent, words(QT_TRANSLATE_NOOP("AssetQuestions", "Asset Database")),
                                     words(QT_TRANSLATE_NOOP("AssetQuestions", "Password:")),
                                     QLineEdit::Password, QString(), &isEntered);
    return isEntered;
}
