#include "DesktopClipboard.h"

#include "SetCodec.h"

#include <QGuiApplication>
#include <QMimeData>
#include <QUuid>

namespace kernel {

namespace {

const QString JsonFormat = QStringLiteral("application/json");
const QString PlainFormat = QStringLiteral("text/plain");
const QString TableFormat = QStringLiteral("text/tab-separated-values");
/// Tells by which process the content was offered: our own is not read back.
const QString OriginFormat = QStringLiteral("application/x-metadata-clipboard-origin");

/// More than that is not carried over the desktop; it can still be pasted in this process, or saved.
constexpr int LargestText = 64 << 20;

QByteArray origin()
{
    static const QByteArray id = QUuid::createUuid().toByteArray();
    return id;
}

/// The text that the desktop offers, the exact one first; empty where there is none or it is too long.
QByteArray textOf(const QMimeData &data)
{
    const QString format = data.hasFormat(JsonFormat) ? JsonFormat : PlainFormat;
    const QByteArray text = format == JsonFormat ? data.data(format) : data.text().toUtf8();
    return text.size() <= LargestText ? text : QByteArray();
}

} // namespace

DesktopClipboard::DesktopClipboard(Clipboard &clipboard) : m_clipboard(clipboard) {}

DesktopClipboard::~DesktopClipboard() = default;

void DesktopClipboard::attach()
{
    if (m_desktop || !SetCodec::installed()
        || !qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        return;
    }
    m_desktop = QGuiApplication::clipboard();
    connect(m_desktop.data(), &QClipboard::dataChanged, this, &DesktopClipboard::onDataChanged);
    if (m_clipboard.sets().empty() && m_clipboard.entries().empty()) {
        takeForeign();
    }
}

bool DesktopClipboard::isOurs() const
{
    const QMimeData *data = m_desktop->mimeData();
    return data && data->hasFormat(OriginFormat) && data->data(OriginFormat) == origin();
}

void DesktopClipboard::offerSets()
{
    attach();
    if (m_desktop && SetCodec::installed()) {
        const QByteArray text = SetCodec::installed()->textOfSets(m_clipboard.sets(), LargestText);
        offer(text, text, QByteArray());
    }
}

void DesktopClipboard::offerEntries()
{
    attach();
    if (m_desktop && SetCodec::installed()) {
        const SetCodec &codec = *SetCodec::installed();
        const QByteArray table = codec.tableOfEntries(m_clipboard.entries(), LargestText);
        offer(codec.textOfEntries(m_clipboard.entries(), LargestText), table, table);
    }
}

void DesktopClipboard::offer(const QByteArray &json, const QByteArray &plain, const QByteArray &table)
{
    // Bytes made now, not when they are asked for: the desktop keeps them longer than the scene lives, and than
    // the code of plug-ins is loaded.
    auto *data = new QMimeData;
    data->setData(OriginFormat, origin());
    const auto add = [data](const QString &format, const QByteArray &bytes) {
        if (!bytes.isEmpty()) {
            data->setData(format, bytes);
        }
    };
    add(JsonFormat, json);
    add(PlainFormat, plain);
    add(TableFormat, table);
    m_desktop->setMimeData(data);
}

void DesktopClipboard::takeForeign()
{
    const QMimeData *data = m_desktop->mimeData();
    std::vector<SetCopy> sets;
    std::vector<EntryCopy> entries;
    if (data && SetCodec::installed() && !isOurs()) {
        SetCodec::installed()->readForeign(textOf(*data), sets, entries);
    }
    m_clipboard.setSets(std::move(sets));
    m_clipboard.setEntries(std::move(entries));
}

void DesktopClipboard::onDataChanged()
{
    if (!SetCodec::installed() || isOurs()) {
        return;
    }
    const bool hadSets = !m_clipboard.sets().empty();
    const bool hadEntries = !m_clipboard.entries().empty();
    takeForeign();
    if (hadSets == m_clipboard.sets().empty() || hadEntries == m_clipboard.entries().empty()) {
        Q_EMIT pasteChanged();
    }
}

} // namespace kernel
