#pragma once

#include "nkQt4ExtExport.h"

#include <QWidget>

class QLineEdit;
class QNKInlineButton;

/// A search field with a clear button and a switch.
class NK_QT4EXT_EXPORT QNKSearchBox : public QWidget
{
    Q_OBJECT
public:
    explicit QNKSearchBox(QWidget *parent = nullptr);
    ~QNKSearchBox() override;

    QLineEdit *lineEdit() const { return m_lineEdit; }
    QString text() const;
    void setPlaceholderText(const QString &text);
    /// While disabled the text stays and nothing is searched.
    bool isSearchEnabled() const;
    void setSearchEnabled(bool enabled);

Q_SIGNALS:
    /// The text differs from the last one told. Told while a person types and for changes by program.
    void searchChanged(const QString &text);
    /// The search was switched off.
    void searchDisabled();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void tell();

    QLineEdit *m_lineEdit = nullptr;
    QNKInlineButton *m_switch = nullptr;
    QString m_told;
    bool m_enabled = true;
};
