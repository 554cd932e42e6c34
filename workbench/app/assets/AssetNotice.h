#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

/// What the asset panel has to say about its database, with what can be done about it. Hidden while there is nothing.
class AssetNotice : public QWidget
{
    Q_OBJECT
public:
    explicit AssetNotice(QWidget *parent = nullptr);

    /// @param text plain; empty hides the notice
    void say(const QString &text, bool canRetry, bool wantsPassword);
    QString text() const;
    QPushButton *retryButton() const { return m_retry; }
    QPushButton *passwordButton() const { return m_password; }

private:
    QLabel *m_text;
    QPushButton *m_retry;
    QPushButton *m_password;
};
