#pragma once

#include <QColor>
#include <QVector>
#include <QWidget>

class ColorSwatch;

/// The colours that were chosen last, the newest first, to choose them again. They are kept as long as the
/// process runs and shared by all colour dialogs.
class RecentColors : public QWidget
{
    Q_OBJECT
public:
    explicit RecentColors(QWidget *parent = nullptr);

    /// How many are remembered.
    static constexpr int capacity = 10;

    /// Remembers a colour; one that is known moves to the front.
    static void remember(const QColor &color);
    static QVector<QColor> colors();

    /// Shows what is remembered now.
    void refresh();

Q_SIGNALS:
    void picked(const QColor &color);

private:
    QVector<ColorSwatch *> m_swatches;
};
