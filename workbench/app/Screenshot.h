#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QWidget;

/// Saves a picture of a window once it has been painted and nothing is waiting to change it.
class Screenshot : public QObject
{
    Q_OBJECT
public:
    /// @param window must be shown; not owned
    /// @param path of the PNG file to write; an existing file is replaced
    Screenshot(QWidget *window, const QString &path, QObject *parent = nullptr);
    ~Screenshot() override;

Q_SIGNALS:
    /// The picture is written (error is empty), or could not be. Once.
    void finished(const QString &error);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void settle();
    void save();

    QPointer<QWidget> m_window;
    QString m_path;
    bool m_painted = false;
    int m_turnsLeft;
};
