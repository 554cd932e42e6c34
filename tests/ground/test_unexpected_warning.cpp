#include "TestMain.h"

/// Passes all by itself; only the rules for test output fail it.
class UnexpectedWarning : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void warns() { qWarning("nobody declared this"); }
};

NK_GUILESS_TEST_MAIN(UnexpectedWarning)
#include "test_unexpected_warning.moc"
