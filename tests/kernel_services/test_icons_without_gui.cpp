#include "TestMain.h"

#include <kernel/icons/IconSource.h>
#include <kernel/icons/KindIcons.h>
#include <nkKernelServices/nkLogService.h>

/// Icons in a process without a GUI application: nothing is answered, nothing breaks.
class TestIconsWithoutGui : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersNullInSilence();
};

void TestIconsWithoutGui::answersNullInSilence()
{
    QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
    kernel::IconSource &source = kernel::IconSource::the();
    QVERIFY(source.icon(QStringLiteral("Copy")).isNull());
    QVERIFY(source.icon(QStringLiteral("NoSuchIcon")).isNull());
    QVERIFY(source.pixmap(QStringLiteral("MetadataEditor/MetadataSet.svg")).isNull());
    QVERIFY(source.render(QStringLiteral("MetadataEditor/MetadataSet.svg"), QSize(16, 16)).isNull());
    QVERIFY(kernel::KindIcons::ofEntry(false, true).isNull());
    QVERIFY(reports.isEmpty());
}

NK_GUILESS_TEST_MAIN(TestIconsWithoutGui)
#include "test_icons_without_gui.moc"
