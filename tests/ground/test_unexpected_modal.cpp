#include "TestMain.h"

class UnexpectedModal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensABoxThatNobodyWaitsFor()
    {
        QMessageBox::information(nullptr, QString(), QStringLiteral("Hello"));
    }
};

NK_TEST_MAIN(UnexpectedModal)
#include "test_unexpected_modal.moc"
