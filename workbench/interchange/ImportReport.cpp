#include <interchange/ImportReport.h>

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace interchange {

QString ImportReport::text(ImportReason reason)
{
    switch (reason) {
    case ImportReason::LongInteger:
        return tr("an integer beyond 32 bits, kept as text");
    case ImportReason::UnboundedNumber:
        return tr("a number beyond the range of a float, kept as text");
    case ImportReason::BrokenText:
        return tr("text with half a surrogate pair, shown as a replacement character");
    case ImportReason::ExtrasNoObject:
        return tr("the extras are a bare value without a key");
    case ImportReason::EmptyObject:
        return tr("an empty object");
    case ImportReason::NestedArray:
        return tr("an array inside an array");
    case ImportReason::ObjectInArray:
        return tr("an array that holds objects");
    case ImportReason::HiddenByLaterKey:
        return tr("the same key comes again later, and that one counts");
    case ImportReason::OtherOwner:
        return tr("extras of something that carries no metadata here");
    case ImportReason::RootHasParent:
        return tr("a root of a scene that is also a child, shown below its parent");
    case ImportReason::ChangedElsewhere:
        return tr("another program has changed it, and its value counts");
    case ImportReason::GoneElsewhere:
        return tr("another program has removed it");
    case ImportReason::ForeignAnnex:
        return tr("sets and assignments cannot be read here and stay as they are");
    case ImportReason::UnknownObject:
        return tr("its sets and types belong to an object that is not in the file any more");
    default:
        return textOfForeign(reason);
    }
}

/// The reasons of files that are never written.
QString ImportReport::textOfForeign(ImportReason reason)
{
    switch (reason) {
    case ImportReason::UnknownLogical:
        return tr("neither true nor false, kept as the text “unknown”");
    case ImportReason::BrokenRecord:
        return tr("a damaged record");
    case ImportReason::DoubledRecord:
        return tr("an earlier record has the same number, and that one counts");
    case ImportReason::DoubledProperty:
        return tr("an earlier property has the same name, and that one counts");
    case ImportReason::UnreadableProperty:
        return tr("a table, a reference or another property that is more than a value");
    case ImportReason::UnassignedSet:
        return tr("a set that no object has");
    case ImportReason::MissingRecord:
        return tr("a record that the file speaks of and does not have");
    case ImportReason::SecondPlace:
        return tr("an object that the file places twice, shown at its first place");
    case ImportReason::LoopInTree:
        return tr("objects that stand below each other in a ring, shown below the first of them");
    case ImportReason::TooDeepInTree:
        return tr("an object too many levels below others, shown at the top level");
    case ImportReason::DoubledIdentifier:
        return tr("another object has the same identifier");
    case ImportReason::OtherSchema:
        return tr("another schema than IFC2x3, read as far as it is the same");
    case ImportReason::NewObject:
        return tr("new in the file since its metadata was saved; it has the metadata of the file");
    case ImportReason::GoneObject:
        return tr("saved metadata of an object that is not in the file any more; it is kept in the sidecar");
    case ImportReason::ForeignSidecar:
        return tr("the saved metadata cannot be read and stays as it is");
    default:
        return QString();
    }
}

QString ImportReport::text(const Item &item)
{
    return item.detail.isEmpty() ? text(item.reason) : tr("%1: %2").arg(text(item.reason), item.detail);
}

QString ImportReport::summary() const
{
    if (m_keptCount == 0 && isClean())
        return tr("no metadata in the file");
    const QLocale locale;
    const QString text = tr("%1 entries read as they are, %2 converted, %3 left untouched in the file")
                             .arg(locale.toString(m_keptCount), locale.toString(m_converted.size()),
                                  locale.toString(m_untouched.size()));
    return m_refused.isEmpty() ? text : tr("%1, %2 refused").arg(text).arg(m_refused.size());
}

QString ImportReport::details(int limit) const
{
    QVector<Item> items = m_refused + m_converted + m_untouched + m_notes;
    const int shown = std::min(std::max(limit, 0), items.size());
    QStringList lines;
    for (int i = 0; i < shown; ++i)
        lines.append(tr("%1: %2").arg(items.at(i).path, text(items.at(i))));
    if (shown < items.size())
        lines.append(tr("and %1 more").arg(items.size() - shown));
    return lines.join(QLatin1Char('\n'));
}

} // namespace interchange
