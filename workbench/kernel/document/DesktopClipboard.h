#pragma once

#include "Clipboard.h"

#include <QClipboard>
#include <QObject>
#include <QPointer>

#include <vector>

class QMimeData;

namespace kernel {

/// Keeps the document's clipboards and the desktop's in step: what is copied here is offered to other programs
/// as text, and what other programs copy takes the place of both clipboards, as sets or as entries; as
/// nothing, where it is neither.
///
/// Does nothing without a GUI application or an installed codec.
class DesktopClipboard : public QObject
{
    Q_OBJECT
public:
    explicit DesktopClipboard(Clipboard &clipboard);
    ~DesktopClipboard() override;

    /// Looks at the desktop's clipboard from now on; to be called before the clipboards are used. Costs nothing
    /// once that is so.
    void attach();
    /// Offers the present sets, or the present entries, to other programs.
    void offerSets();
    void offerEntries();

Q_SIGNALS:
    /// Another program's clipboard has come or gone such that there is something to paste where there was
    /// nothing, or the other way round.
    void pasteChanged();

private:
    void offer(const QByteArray &json, const QByteArray &plain, const QByteArray &table);
    bool isOurs() const;
    void takeForeign();
    void onDataChanged();

    Clipboard &m_clipboard;
    QPointer<QClipboard> m_desktop;
};

} // namespace kernel
