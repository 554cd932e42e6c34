#include "TestMain.h"

class UnusedAnswer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void waitsForABoxThatNeverComes() { ModalAnswer yes = ModalAnswer::button(QMessageBox::Yes); }
};

NK_TEST_MAIN(UnusedAnswer)
#include "test_unused_answer.moc"
