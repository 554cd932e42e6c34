#include <interchange/sets/SetFileWriter.h>

#include <interchange/sets/MomentText.h>
#include <interchange/sets/SetFileNames.h>

#include <QDateTime>

#include <cmath>

namespace interchange {

void SetFileWriter::beginFormat(std::string_view format, std::string_view list)
{
    m_out.add("{\"format\":\"");
    m_out.add(format);
    m_out.add("\",\"version\":");
    m_out.addInteger(SetFileNames::Version);
    m_out.add(",\"");
    m_out.add(list);
    m_out.add("\":[");
}

void SetFileWriter::beginSets()
{
    beginFormat(SetFileNames::SetsFormat, "sets");
    m_isFirst = true;
}

void SetFileWriter::addSet(const kernel::SetCopy &set)
{
    m_out.add(m_isFirst ? "\n" : ",\n");
    m_isFirst = false;
    writeSet(set);
}

void SetFileWriter::endSets()
{
    m_out.add(m_isFirst ? "]}\n" : "\n]}\n");
}

void SetFileWriter::writeEntries(const std::vector<kernel::EntryCopy> &entries)
{
    beginFormat(SetFileNames::EntriesFormat, "entries");
    addEntries(entries);
    m_out.add("]}\n");
}

void SetFileWriter::writeSet(const kernel::SetCopy &set)
{
    m_out.add("{\"name\":");
    m_out.addString(set.name);
    m_out.add(",\"color\":\"");
    m_out.add(set.color.name().toStdString());
    m_out.add(set.locked ? "\",\"locked\":true,\"entries\":[" : "\",\"entries\":[");
    addEntries(set.entries);
    m_out.add("]}");
}

void SetFileWriter::addEntries(const std::vector<kernel::EntryCopy> &entries)
{
    bool isFirst = true;
    for (const kernel::EntryCopy &entry : entries) {
        m_out.add(isFirst ? "\n" : ",\n");
        isFirst = false;
        addEntry(entry);
    }
    if (!isFirst)
        m_out.add("\n");
}

void SetFileWriter::addEntry(const kernel::EntryCopy &entry)
{
    const kernel::EntryValue &value = entry.value;
    const int type = value.isTag()          ? int(nkMetadataTypes::Tag)
                     : value.isNumberText() ? SetFileNames::NumberText
                                            : int(value.type());
    m_out.add("{\"key\":");
    m_out.addString(entry.key);
    m_out.add(",\"type\":\"");
    m_out.add(SetFileNames::Types[type]);
    if (value.isTag()) {
        m_out.add("\"}");
        return;
    }
    m_out.add("\",\"value\":");
    addValue(value.type(), value.toVariant());
    m_out.add("}");
}

void SetFileWriter::addValue(nkMetadataTypes::ValueType type, const QVariant &value)
{
    switch (type) {
    case nkMetadataTypes::Integer:
        return m_out.addInteger(value.toInt());
    case nkMetadataTypes::Float:
        return addFloat(value.toDouble());
    case nkMetadataTypes::Boolean:
        return m_out.add(value.toBool() ? "true" : "false");
    case nkMetadataTypes::Time:
        return addQuoted(value.toTime().isValid() ? MomentText::ofTime(value.toTime()) : QByteArray());
    case nkMetadataTypes::Date:
        return addQuoted(value.toDate().isValid() ? MomentText::ofDate(value.toDate()) : QByteArray());
    case nkMetadataTypes::DateTime:
        return addQuoted(value.toDateTime().isValid() ? MomentText::ofDateTime(value.toDateTime())
                                                      : QByteArray());
    case nkMetadataTypes::List:
        return addList(value.toList());
    case nkMetadataTypes::String:
    case nkMetadataTypes::Tag:
        break;
    }
    m_out.addString(value.toString());
}

void SetFileWriter::addFloat(double number)
{
    if (std::isfinite(number))
        return m_out.addDouble(number);
    const std::string_view name = std::isnan(number) ? SetFileNames::NotANumber
                                  : number > 0       ? SetFileNames::Infinity
                                                     : SetFileNames::MinusInfinity;
    addQuoted(QByteArray(name.data(), int(name.size())));
}

void SetFileWriter::addList(const QVariantList &list)
{
    m_out.add("[");
    bool isFirst = true;
    for (const QVariant &element : list) {
        if (!isFirst)
            m_out.add(",");
        isFirst = false;
        addElement(element);
    }
    m_out.add("]");
}

/// Elements have no type of their own beside them: JSON tells most of them apart, and the others come as objects.
void SetFileWriter::addElement(const QVariant &element)
{
    switch (element.userType()) {
    case QMetaType::UnknownType:
        return m_out.add("null");
    case QMetaType::Bool:
        return addValue(nkMetadataTypes::Boolean, element);
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return m_out.addInteger(element.toLongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return std::isfinite(element.toDouble()) ? m_out.addDouble(element.toDouble())
                                                 : addTyped(nkMetadataTypes::Float, element);
    case QMetaType::QTime:
        return addTyped(nkMetadataTypes::Time, element);
    case QMetaType::QDate:
        return addTyped(nkMetadataTypes::Date, element);
    case QMetaType::QDateTime:
        return addTyped(nkMetadataTypes::DateTime, element);
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return addList(element.toList());
    default:
        return m_out.addString(element.toString());
    }
}

void SetFileWriter::addTyped(nkMetadataTypes::ValueType type, const QVariant &value)
{
    m_out.add("{\"type\":\"");
    m_out.add(SetFileNames::Types[type]);
    m_out.add("\",\"value\":");
    addValue(type, value);
    m_out.add("}");
}

void SetFileWriter::addQuoted(const QByteArray &ascii)
{
    m_out.add("\"");
    m_out.add({ascii.constData(), size_t(ascii.size())});
    m_out.add("\"");
}

} // namespace interchange
