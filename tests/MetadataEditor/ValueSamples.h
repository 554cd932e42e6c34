#pragma once

#include <nkKernelServices/nkMetadataTypes.h>

#include <QDataStream>
#include <QDateTime>
#include <QRandomGenerator>
#include <QVariant>
#include <QVector>

#include <cmath>
#include <limits>

/// Values of the eight types for tests of what editors do to them.
namespace ValueSamples {

/// What a value is stored as, to the bit.
inline QByteArray bits(const QVariant &value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    return bytes;
}

/// What the editors of the types are known to write for a value typed into them.
inline QVariant asEdited(int type, const QVariant &typed)
{
    switch (type) {
    case nkMetadataTypes::Float: {
        const double single = double(float(typed.toDouble()));
        const bool isLost = std::isinf(single) || (single == 0.0 && typed.toDouble() != 0.0);
        return isLost ? typed : single;
    }
    case nkMetadataTypes::Time:
        return QTime(typed.toTime().hour(), typed.toTime().minute());
    default:
        return typed;
    }
}

/// What is likeliest to be lost.
inline QVariantList boundaries(int type)
{
    using Integers = std::numeric_limits<int>;
    using Floats = std::numeric_limits<double>;
    const QDate date(2023, 3, 2);
    switch (type) {
    case nkMetadataTypes::Integer:
        return {0, 1, -1, Integers::max(), Integers::min()};
    case nkMetadataTypes::Float:
        return {0.0,
                -0.0,
                0.1,
                0.123456789,
                16777217.0,
                9007199254740993.0,
                1e-300,
                1e300,
                -1e-7,
                1e38,
                3.5e38,
                Floats::max(),
                Floats::lowest(),
                Floats::min(),
                Floats::denorm_min()};
    case nkMetadataTypes::Boolean:
        return {false, true};
    case nkMetadataTypes::Time:
        return {QTime(0, 0), QTime(23, 59, 59, 999), QTime(12, 0, 0, 1), QTime(0, 0, 59)};
    case nkMetadataTypes::Date:
        return {QDate(1, 1, 1), QDate(100, 1, 1),   QDate(1582, 10, 15), QDate(1752, 9, 13),
                date,           QDate(2024, 2, 29), QDate(9999, 12, 31)};
    case nkMetadataTypes::DateTime:
        return {QDateTime(QDate(1, 1, 1), QTime(0, 0)), QDateTime(date, QTime(23, 59, 59, 999)),
                QDateTime(date, QTime(1, 2, 3), Qt::UTC),
                QDateTime(date, QTime(1, 2, 3), Qt::OffsetFromUTC, 3600),
                QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59, 999))};
    case nkMetadataTypes::List:
        return {QVariant(QVariantList()),
                QVariant(QVariantList{QString(QLatin1String("")), 1.5, QTime(1, 2, 3, 4)}),
                QVariant(QVariantList{QStringLiteral("a"), QVariant(QVariantList{2.5, true, date})})};
    default:
        return {QString(QLatin1String("")),       QStringLiteral("a\nb\tc\r"),
                QStringLiteral("<b>&amp;%1</b>"), QString(QChar(0x202E)),
                QString(32768, QLatin1Char('x')), QString(1 << 20, QLatin1Char('y'))};
    }
}

/// Letters of many scripts, some beyond 16 bits.
inline QString randomText(QRandomGenerator &source)
{
    QVector<uint> letters(1 + source.bounded(20));
    for (uint &letter : letters) {
        const bool isFar = source.bounded(8) == 0;
        letter = isFar ? 0x1F600 + source.bounded(64) : 0x20 + source.bounded(0x2000);
    }
    return QString::fromUcs4(letters.constData(), letters.size());
}

/// @param type 0..7. A list has two elements of the other types.
inline QVariant random(int type, QRandomGenerator &source)
{
    switch (type) {
    case nkMetadataTypes::Integer:
        return int(source.generate() >> source.bounded(32));
    case nkMetadataTypes::Float:
        // A spin box of Qt rounds what is typed below 1e-306; untouched such numbers stay, see the boundaries.
        return std::ldexp(source.generateDouble() - 0.5, source.bounded(-1000, 1024));
    case nkMetadataTypes::Boolean:
        return bool(source.bounded(2));
    case nkMetadataTypes::Time:
        return QTime::fromMSecsSinceStartOfDay(source.bounded(86400000));
    case nkMetadataTypes::Date:
        return QDate(100, 1, 1).addDays(source.bounded(3600000));
    case nkMetadataTypes::DateTime:
        return QDateTime(QDate(1800, 1, 1).addDays(source.bounded(200000)),
                         QTime::fromMSecsSinceStartOfDay(source.bounded(86400000)),
                         source.bounded(2) == 0 ? Qt::LocalTime : Qt::UTC);
    case nkMetadataTypes::List:
        return QVariantList{random(source.bounded(7), source), random(source.bounded(7), source)};
    default:
        return randomText(source);
    }
}

} // namespace ValueSamples
