#pragma once

#include <QObject>

class QMimeData;
class QWidget;

/// Takes a file that is dropped onto a window, wherever nothing below the mouse wants it itself.
class FileDrops : public QObject
{
    Q_OBJECT
public:
    /// @param window not owned
    explicit FileDrops(QWidget *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// A file was dropped; comes from the event loop, when the drag is over. @param path absolute
    void dropped(const QString &path);

private:
    static QString fileOf(const QMimeData *data);
};
