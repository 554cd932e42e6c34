#include "table/nkMetadataTableFilterModel.h"

#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataRowHandles.h"

#include <QColor>

using namespace nkMetadataKeyValue;

nkMetadataTableFilterModel::nkMetadataTableFilterModel(QObject *parent) : nkMetadataFilterModel(parent) {}

nkMetadataTableFilterModel::~nkMetadataTableFilterModel() = default;

void nkMetadataTableFilterModel::setKeyFilter(const QString &filter)
{
    setText(m_key, filter);
}

void nkMetadataTableFilterModel::setValueFilter(const QString &filter)
{
    setText(m_value, filter);
}

void nkMetadataTableFilterModel::setText(nkMetadataTextFilter &filter, const QString &text)
{
    if (filter.text() != text) {
        filter.setText(text);
        refilter();
    }
}

void nkMetadataTableFilterModel::setTypeFilter(const QList<int> &allowedTypes)
{
    if (m_allowedTypes != allowedTypes) {
        m_allowedTypes = allowedTypes;
        m_typeFilterEmpty = allowedTypes.isEmpty();
        refilter();
    }
}

void nkMetadataTableFilterModel::enableTypeFilter(bool enable)
{
    if (m_typeFilterEnabled != enable) {
        m_typeFilterEnabled = enable;
        refilter();
    }
}

void nkMetadataTableFilterModel::prepareFilter()
{
    nkMetadataFilterModel::prepareFilter();
    if (m_name.text() != nameFilter()) {
        m_name.setText(nameFilter());
    }
}

bool nkMetadataTableFilterModel::acceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    const auto cell = [&](int column) { return sourceModel()->index(sourceRow, column, sourceParent); };
    return (m_name.isEmpty() || acceptsText(m_name, cell(AssignmentColumn)))
           && (m_key.isEmpty() || acceptsText(m_key, cell(KeyColumn)))
           && (m_value.isEmpty() || acceptsText(m_value, cell(ValueColumn)))
           && (!filtersByType() || acceptsType(cell(AssignmentColumn)))
           && (!filtersByState() || acceptsState(cell(AssignmentColumn)));
}

bool nkMetadataTableFilterModel::acceptsText(const nkMetadataTextFilter &filter,
                                             const QModelIndex &sourceIndex)
{
    const QVariant text = sourceIndex.data(Qt::DisplayRole);
    // Nearly always a text: looked at where it lies.
    return text.userType() == QMetaType::QString
               ? filter.isIn(*static_cast<const QString *>(text.constData()))
               : filter.isIn(text.toString());
}

bool nkMetadataTableFilterModel::filtersByType() const
{
    return m_typeFilterEnabled && !m_typeFilterEmpty;
}

bool nkMetadataTableFilterModel::acceptsType(const QModelIndex &sourceIndex) const
{
    const nkdMetadataEntry entry = nkMetadataRowHandles::entry(sourceIndex);
    return m_allowedTypes.contains(entry.getValueType())
           || (m_allowedTypes.contains(TagType) && entry.isTag());
}

bool nkMetadataTableFilterModel::filtersByState() const
{
    return isStateFilterEnabled() && !stateFilter().isEmpty();
}

bool nkMetadataTableFilterModel::acceptsState(const QModelIndex &sourceIndex) const
{
    const nkdMetadataSet set = nkMetadataRowHandles::set(sourceIndex);
    return set.isNull() || filterState(set);
}

bool nkMetadataTableFilterModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (left.column() != IconColumn) {
        return nkMetadataFilterModel::lessThan(left, right);
    }
    const QColor leftColor = left.data(ColorRole).value<QColor>();
    const QColor rightColor = right.data(ColorRole).value<QColor>();
    if (leftColor == rightColor) {
        return lessByTexts(left, right);
    }
    if (leftColor.hsvHue() != rightColor.hsvHue()) {
        return leftColor.hsvHue() < rightColor.hsvHue();
    }
    if (leftColor.hsvSaturation() != rightColor.hsvSaturation()) {
        return leftColor.hsvSaturation() < rightColor.hsvSaturation();
    }
    return leftColor.value() < rightColor.value();
}

bool nkMetadataTableFilterModel::lessByTexts(const QModelIndex &left, const QModelIndex &right) const
{
    const auto text = [](const QModelIndex &index, int column) {
        return index.sibling(index.row(), column).data(Qt::DisplayRole).toString();
    };
    // Right before left is meant: within one colour the rows run against the order of the other columns.
    const QString leftName = text(left, AssignmentColumn);
    const QString rightName = text(right, AssignmentColumn);
    if (leftName != rightName) {
        return lessThan(rightName, leftName);
    }
    return lessThan(text(right, KeyColumn), text(left, KeyColumn));
}

bool nkMetadataTableFilterModel::appendSortKey(const QModelIndex &sourceIndex, QByteArray &key) const
{
    const auto text = [&](int column) {
        return sourceIndex.sibling(sourceIndex.row(), column).data(Qt::DisplayRole);
    };
    if (sourceIndex.column() != IconColumn) {
        const QVariant shown = sourceIndex.data(Qt::DisplayRole);
        if (shown.userType() == QMetaType::QString) {
            appendTextSortKey(shown.toString(), key);
        }
        return shown.userType() == QMetaType::QString;
    }
    const QColor color = sourceIndex.data(ColorRole).value<QColor>();
    const int hue = color.hsvHue() + 1; // grey has -1
    for (const int part : {hue >> 8, hue & 0xff, color.hsvSaturation(), color.value()}) {
        key.append(char(part));
    }
    // What only the rounding to these numbers makes equal is not of one colour.
    const QRgba64 exact = color.rgba64();
    for (const quint16 part : {exact.red(), exact.green(), exact.blue(), exact.alpha()}) {
        key.append(char(part >> 8)).append(char(part & 0xff));
    }
    appendInvertedTextSortKey(text(AssignmentColumn).toString(), key);
    appendInvertedTextSortKey(text(KeyColumn).toString(), key);
    return true;
}
