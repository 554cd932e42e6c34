#include "table/nkMetadataCellToolTip.h"

#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataValueText.h"
#include "table/nkMetadataValueType.h"

#include <QCoreApplication>
#include <QMap>
#include <QTextDocument>

namespace {

using namespace nkMetadataKeyValue;

/// From this length on a value's tool tip wraps.
constexpr int WrapLength = 21;

QString columnPrefix(int column)
{
    static const QMap<int, QString> prefixes{
        {IconColumn, QCoreApplication::translate("Metadata", "Icon indicating Entry Type")},
        {AssignmentColumn, QCoreApplication::translate("Metadata", "Assigned to")},
        {KeyColumn, QCoreApplication::translate("Metadata", "Metadata Key")},
        {ValueColumn, QCoreApplication::translate("Metadata", "Metadata Value")},
        {TypeColumn, QCoreApplication::translate("Metadata", "Metadata Type")},
    };
    return prefixes.value(column);
}

QString cellText(const nkdMetadataSet &set, const nkdMetadataEntry &entry, int column)
{
    switch (column) {
    case IconColumn:
        return nkMetadataValueText::iconWord(entry.isTag(), set.isObjectSet());
    case AssignmentColumn:
        return set.getName();
    case KeyColumn:
        return entry.getKey();
    case ValueColumn:
        return nkMetadataValueText::text(entry.getValue());
    default:
        return nkMetadataValueType::name(entry.getValueType());
    }
}

QString shortened(const QString &text)
{
    if (text.size() <= nkMetadataCellToolTip::MaximumTextLength) {
        return text;
    }
    return text.left(nkMetadataCellToolTip::MaximumTextLength) + QChar(0x2026);
}

} // namespace

QString nkMetadataCellToolTip::text(const nkdMetadataSet &set, const nkdMetadataEntry &entry, int column)
{
    if (column < 0 || column >= ColumnCount) {
        return QString();
    }
    const QString prefix = columnPrefix(column) + QLatin1String(": ");
    const QString whole = cellText(set, entry, column);
    const bool wraps = column == ValueColumn && whole.size() >= WrapLength;
    const QString plain = prefix + shortened(whole);
    if (!wraps && !Qt::mightBeRichText(plain)) {
        return plain;
    }
    return QStringLiteral("<html><head/><body><p>%1%2</p></body></html>")
        .arg(prefix.toHtmlEscaped(), shortened(whole).toHtmlEscaped());
}
