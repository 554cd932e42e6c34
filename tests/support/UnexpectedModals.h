#pragma once

#include <QObject>

/// Watches a test program for modal dialogs and pop-up menus and gives them their waiting answers.
///
/// A modal dialog that nobody waits for fails the running test and is rejected, so that it does not hang;
/// progress dialogs and menus that nobody waits for are left alone. One lives for as long as the test
/// functions run; NK_TEST_MAIN makes it. Without widgets it does nothing.
class UnexpectedModals : public QObject
{
public:
    UnexpectedModals();

    bool eventFilter(QObject *watched, QEvent *event) override;
};
