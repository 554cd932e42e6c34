#include "TestMain.h"

/// Warns when Qt Test no longer listens.
class StrayWarning : public QObject
{
    Q_OBJECT

public:
    ~StrayWarning() override { qWarning("too late for Qt Test"); }

private Q_SLOTS:
    void passes() {}
};

NK_GUILESS_TEST_MAIN(StrayWarning)
#include "test_stray_warning.moc"
