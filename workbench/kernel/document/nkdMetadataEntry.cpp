#include <nkKernelServices/nkdMetadataEntry.h>

#include "../icons/KindIcons.h"
#include "Document.h"
#include "EntryOperations.h"
#include "EntryReading.h"
#include "NumberList.h"
#include "Store.h"

#include <nkKernelServices/nkdMetadataSet.h>

using namespace kernel;

namespace {

EntryReading reading(const nkdMetadataEntry &entry)
{
    return EntryReading(Document::the(), entry.getObjectId());
}

} // namespace

nkdMetadataEntry::~nkdMetadataEntry() = default;

QString nkdMetadataEntry::getKey() const
{
    return reading(*this).key();
}

void nkdMetadataEntry::setKey(const QString &key)
{
    EntryOperations::setKey(getObjectId(), key);
}

QVariant nkdMetadataEntry::getValue() const
{
    return reading(*this).value();
}

void nkdMetadataEntry::setValue(const QVariant &value)
{
    EntryOperations::setValue(getObjectId(), value);
}

nkMetadataTypes::ValueType nkdMetadataEntry::getValueType() const
{
    return reading(*this).type();
}

void nkdMetadataEntry::setValueType(nkMetadataTypes::ValueType type)
{
    EntryOperations::setType(getObjectId(), type);
}

bool nkdMetadataEntry::isTag() const
{
    return reading(*this).isTag();
}

void nkdMetadataEntry::setTag(const QString &key)
{
    EntryOperations::makeTag(getObjectId(), key);
}

nkdMetadataSet nkdMetadataEntry::getSet() const
{
    const Store &store = Document::the().store();
    const EntryRecord *entry = store.findEntry(getObjectId());
    return entry ? nkdMetadataSet(store.idOf(entry->set)) : nkdMetadataSet();
}

QIcon nkdMetadataEntry::getIcon() const
{
    const EntryReading entry = reading(*this);
    return entry.isReadable() ? KindIcons::ofEntry(entry.isTag(), getSet().isObjectSet()) : QIcon();
}

// Typed conversions -------------------------------------------------------------------------------------

void nkdMetadataEntry::setValueFromVector3D(const QVector3D &vector)
{
    const QVariantList components{double(vector.x()), double(vector.y()), double(vector.z())};
    EntryOperations::setTypedValue(getObjectId(), EntryValue(components));
}

QVector3D nkdMetadataEntry::getValueAsVector3D() const
{
    const std::optional<std::vector<double>> numbers = numbersOf(getValue(), 3);
    return numbers ? QVector3D(float((*numbers)[0]), float((*numbers)[1]), float((*numbers)[2]))
                   : QVector3D();
}

void nkdMetadataEntry::setValueFromColor(const QColor &color)
{
    if (color.isValid()) {
        const QColor::NameFormat format = color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb;
        EntryOperations::setTypedValue(getObjectId(), EntryValue(color.name(format)));
    }
}

QColor nkdMetadataEntry::getValueAsColor() const
{
    const QVariant value = getValue();
    if (value.userType() == QMetaType::QString) {
        const QString name = value.toString();
        return QColor::isValidColor(name) ? QColor(name) : QColor();
    }
    return colorOf(value);
}

void nkdMetadataEntry::setValueFromMatrix(const QMatrix4x4 &matrix, nkMetadataTypes::MatrixOrder order)
{
    QVariantList numbers;
    for (int first = 0; first < 4; ++first) {
        for (int second = 0; second < 4; ++second) {
            const float number = order == nkMetadataTypes::RowOrder ? matrix(first, second)
                                                                    : matrix(second, first);
            numbers.append(double(number));
        }
    }
    EntryOperations::setTypedValue(getObjectId(), EntryValue(numbers));
}

QMatrix4x4 nkdMetadataEntry::getValueAsMatrix(nkMetadataTypes::MatrixOrder order) const
{
    QMatrix4x4 matrix;
    const std::optional<std::vector<double>> numbers = numbersOf(getValue(), 16);
    for (int index = 0; numbers && index < 16; ++index) {
        const int first = index / 4;
        const int second = index % 4;
        float &cell = order == nkMetadataTypes::RowOrder ? matrix(first, second) : matrix(second, first);
        cell = float((*numbers)[size_t(index)]);
    }
    return matrix;
}
