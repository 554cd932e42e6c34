#include "BoxText.h"

#include <QApplication>
#include <QFontMetrics>
#include <QMessageBox>
#include <QScreen>
#include <QTextBoundaryFinder>

namespace {

/// Device-independent pixels. On smaller displays QMessageBox leaves its text less than half of their width.
constexpr int mostWidth = 400;

/// A line may be broken behind an ellipsis; a word joiner takes no room and keeps the name together.
const QString ellipsis(QChar(0x2026));
const QString unbreakableEllipsis = ellipsis + QChar(0x2060);

int widthOfLines()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? qMin(mostWidth, screen->availableSize().width() / 4) : mostWidth;
}

} // namespace

QString BoxText::elided(const QString &text)
{
    const QFontMetrics metrics(QApplication::font("QMessageBox"));
    const int width = widthOfLines();
    QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, text);
    QString result;
    for (int start = 0, end = breaks.toNextBoundary(); end > start;
         start = end, end = breaks.toNextBoundary()) {
        int last = end;
        // The blanks at its end, line feeds among them, take no room.
        while (last > start && text.at(last - 1).isSpace()) {
            --last;
        }
        const QString stretch = text.mid(start, last - start);
        const QString shown = metrics.elidedText(stretch, Qt::ElideMiddle, width);
        result += shown == stretch ? shown : QString(shown).replace(ellipsis, unbreakableEllipsis);
        result += text.mid(last, end - last);
    }
    return result;
}
