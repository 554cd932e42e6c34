// The part of JsonEdit that changes lists of whole numbers.

#include <interchange/json/JsonEdit.h>

namespace interchange {

namespace {

using Numbers = std::vector<quint32>;

/// Which of the elements stay where the others go and all new numbers come behind; empty where that does not give
/// the wanted list.
std::vector<bool> staying(const JsonValue &list, const Numbers &wanted)
{
    std::vector<bool> stays;
    size_t found = 0;
    for (const JsonValue element : list.children()) {
        stays.push_back(found < wanted.size() && JsonEdit::wholeOf(element) == wanted[found]);
        found += stays.back() ? 1 : 0;
    }
    const QSet<quint32> rest(wanted.begin() + qint64(found), wanted.end());
    for (const JsonValue element : list.children()) {
        if (rest.contains(JsonEdit::wholeOf(element)))
            return {};
    }
    return stays;
}

} // namespace

quint32 JsonEdit::wholeOf(const JsonValue &number)
{
    bool ok = false;
    return quint32(number.toDouble(&ok));
}

void JsonEdit::setNumbers(const JsonValue &object, QLatin1String key, const Numbers &numbers)
{
    const JsonValue list = object.find(key);
    QByteArrayList texts;
    for (const quint32 number : numbers)
        texts.append(QByteArray::number(number));
    if (!list.isPresent()) {
        if (!numbers.empty())
            append(object, {key, '[' + texts.join(isSpaced(object) ? ", " : ",") + ']'});
        return;
    }
    const std::vector<bool> stays = staying(list, numbers);
    int place = 0;
    size_t at = 0;
    for (const JsonValue element : list.children()) {
        const bool goes = stays.empty() ? place == texts.size() : !stays[at];
        ++at;
        if (goes)
            remove(list, element);
        else if (wholeOf(element) == numbers[size_t(place)])
            ++place;
        else
            replace(element, texts.at(place++));
    }
    for (; place < texts.size(); ++place)
        appendElement(list, texts.at(place));
}

} // namespace interchange
