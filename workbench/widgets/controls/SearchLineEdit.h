#pragma once

#include <QLineEdit>

/// A field for a text to search: with a clear button, and Esc empties it.
class SearchLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit SearchLineEdit(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
