#include "LayerCheck.h"
#include "TestMain.h"

/// The project itself keeps the rules of its rooms.
class Layering : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyIncludeGoesThroughADoorOfTheTable()
    {
        const LayerCheck check(QStringLiteral(NK_SOURCE_DIR), QStringLiteral(NK_QT_INCLUDE_DIR),
                               RoomTable::ofProject());
        // An empty folder would pass as well.
        QVERIFY(check.fileCount() > 50);
        QStringList lines;
        for (const Violation &violation : check.run())
            lines += violation.toString();
        QVERIFY2(lines.isEmpty(), qPrintable(QLatin1Char('\n') + lines.join(QLatin1Char('\n'))));
    }
};

NK_GUILESS_TEST_MAIN(Layering)
#include "test_layering.moc"
