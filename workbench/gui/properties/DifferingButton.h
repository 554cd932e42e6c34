#pragma once

#include <QPushButton>

/// Stands in an editor's place while the objects' values differ. A click, the space bar, or simply typing
/// goes on in the editor.
class DifferingButton : public QPushButton
{
    Q_OBJECT
public:
    explicit DifferingButton(QWidget *parent = nullptr);
    ~DifferingButton() override;

Q_SIGNALS:
    /// A person began to type. @param text what was typed; never empty
    void typed(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
