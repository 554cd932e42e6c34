#include "EntryValueStream.h"

#include <QDateTime>

#include <cstring>

namespace kernel {

namespace {

// The numbers stand in streams: never change them.
enum Kind : quint8 {
    Nothing = 0,
    Text = 1,
    Int = 2,
    Double = 3,
    Bool = 4,
    Time = 5,
    Date = 6,
    DateTime = 7,
    List = 8,
    LongLong = 9,
    ULongLong = 10
};

/// A double by its bits: the stream's floating-point precision may be single.
quint64 bitsOf(double number)
{
    quint64 bits = 0;
    static_assert(sizeof bits == sizeof number, "a double has 64 bits");
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

double fromBits(quint64 bits)
{
    double number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

void writeAt(QDataStream &stream, const QVariant &value, int depth);

void writeList(QDataStream &stream, const QVariantList &list, int depth)
{
    stream << quint8(List) << quint32(list.size());
    for (const QVariant &item : list) {
        writeAt(stream, item, depth + 1);
    }
}

bool writeNumber(QDataStream &stream, const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Int:
        stream << quint8(Int) << qint32(value.toInt());
        return true;
    case QMetaType::Double:
    case QMetaType::Float:
        stream << quint8(Double) << bitsOf(value.toDouble());
        return true;
    case QMetaType::Bool:
        stream << quint8(Bool) << value.toBool();
        return true;
    case QMetaType::LongLong:
        stream << quint8(LongLong) << value.toLongLong();
        return true;
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        stream << quint8(ULongLong) << value.toULongLong();
        return true;
    default:
        return false;
    }
}

bool writeMoment(QDataStream &stream, const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QTime:
        stream << quint8(Time) << value.toTime();
        return true;
    case QMetaType::QDate:
        stream << quint8(Date) << value.toDate();
        return true;
    case QMetaType::QDateTime:
        stream << quint8(DateTime) << value.toDateTime();
        return true;
    default:
        return false;
    }
}

bool isList(const QVariant &value)
{
    return value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QStringList;
}

void writeAt(QDataStream &stream, const QVariant &value, int depth)
{
    if (!value.isValid()) {
        stream << quint8(Nothing);
    } else if (isList(value) && depth < EntryValueStream::deepestList) {
        writeList(stream, value.toList(), depth);
    } else if (!writeNumber(stream, value) && !writeMoment(stream, value)) {
        stream << quint8(Text) << value.toString();
    }
}

template <typename Value>
QVariant readPlain(QDataStream &stream)
{
    Value value{};
    stream >> value;
    return QVariant::fromValue(value);
}

/// A boolean; a byte other than 0 and 1 is damage.
QVariant readBool(QDataStream &stream)
{
    quint8 value = 0;
    stream >> value;
    if (value > 1) {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
    return value == 1;
}

QVariant readDouble(QDataStream &stream)
{
    quint64 bits = 0;
    stream >> bits;
    return fromBits(bits);
}

QVariant readAt(QDataStream &stream, int depth);

/// Grows with what is really there: the count alone of a damaged stream must not reserve memory.
QVariant readList(QDataStream &stream, int depth)
{
    quint32 count = 0;
    stream >> count;
    if (depth > EntryValueStream::deepestList) {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
    QVariantList list;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        list.append(readAt(stream, depth));
    }
    return list;
}

QVariant readScalar(QDataStream &stream, quint8 kind)
{
    switch (kind) {
    case Text:
        return readPlain<QString>(stream);
    case Int:
        return readPlain<qint32>(stream);
    case Double:
        return readDouble(stream);
    case Bool:
        return readBool(stream);
    case Time:
        return readPlain<QTime>(stream);
    case Date:
        return readPlain<QDate>(stream);
    case DateTime:
        return readPlain<QDateTime>(stream);
    case LongLong:
        return readPlain<qlonglong>(stream);
    case ULongLong:
        return readPlain<qulonglong>(stream);
    default:
        stream.setStatus(QDataStream::ReadCorruptData);
        return QVariant();
    }
}

QVariant readAt(QDataStream &stream, int depth)
{
    quint8 kind = 0;
    stream >> kind;
    if (kind == Nothing || stream.status() != QDataStream::Ok) {
        return QVariant();
    }
    return kind == List ? readList(stream, depth + 1) : readScalar(stream, kind);
}

} // namespace

void EntryValueStream::write(QDataStream &stream, const QVariant &value)
{
    writeAt(stream, value, 0);
}

QVariant EntryValueStream::read(QDataStream &stream)
{
    const QVariant value = readAt(stream, 0);
    return stream.status() == QDataStream::Ok ? value : QVariant();
}

} // namespace kernel
