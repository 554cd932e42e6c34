#include "frame/nkMetadataTableColumnTexts.h"

#include "table/nkMetadataKeyValueColumns.h"

#include <QAbstractItemModel>
#include <QCoreApplication>

/// A text of the window, which it is translated for.
#define TEXT(text) QCoreApplication::translate("nkMetadataEditorModule", text)

using namespace nkMetadataKeyValue;

namespace {

QString iconInfo(const char *text)
{
    return QCoreApplication::translate("MetadataIconInfo", text);
}

QString iconColumnInfo()
{
    return QStringLiteral("%1<br>&#x2022; %2<br>&#x2022; %3<br>&#x2022; %4<br>&#x2022; %5")
        .arg(TEXT("Icon Column - lists 4 different icon types:"),
             iconInfo(QT_TRANSLATE_NOOP("MetadataIconInfo", "Tag on Object")),
             iconInfo(QT_TRANSLATE_NOOP("MetadataIconInfo", "Entry on Object")),
             iconInfo(QT_TRANSLATE_NOOP("MetadataIconInfo", "Tag inside Set")),
             iconInfo(QT_TRANSLATE_NOOP("MetadataIconInfo", "Entry inside Set")));
}

} // namespace

QStringList nkMetadataTableColumnTexts::titles()
{
    return {QString(), TEXT("Assignment"), TEXT("Key"), TEXT("Value"), TEXT("Type")};
}

void nkMetadataTableColumnTexts::explain(QAbstractItemModel *model)
{
    const auto setData = [model](int column, int role, const QString &text) {
        model->setHeaderData(column, Qt::Horizontal, text, role);
    };
    setData(IconColumn, Qt::UserRole, TEXT("Icon"));
    setData(IconColumn, Qt::ToolTipRole, iconColumnInfo());
    setData(AssignmentColumn, Qt::ToolTipRole,
            TEXT("Assignment Column - lists the Set or Object where entries are assigned to."));
    setData(KeyColumn, Qt::ToolTipRole, TEXT("Metadata Key Column - lists the chosen names of the Keys."));
    setData(ValueColumn, Qt::ToolTipRole,
            TEXT("Metadata Value Column - lists the defined Value of its type."));
    setData(TypeColumn, Qt::ToolTipRole, TEXT("Metadata Type Column - indicates the type of the entry."));
}
