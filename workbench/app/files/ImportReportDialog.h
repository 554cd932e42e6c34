#pragma once

#include <interchange/ImportReport.h>

#include <QDialog>

class QLabel;
class QTreeWidget;

/// What came of the metadata of a file that was opened: how much was taken in as it is, and item by item what was
/// not, where it stands in the file, and why.
class ImportReportDialog : public QDialog
{
    Q_OBJECT
public:
    /// @param fileName for the heading; foreign text
    ImportReportDialog(const interchange::ImportReport &report, const QString &fileName,
                       QWidget *parent = nullptr);

    /// Items listed one by one; the others are counted.
    static constexpr int capacity = 1000;

private:
    QLabel *makeHeading(const QString &fileName);
    void addList(const interchange::ImportReport &report);
    void addItems(const QString &what, const QVector<interchange::ImportReport::Item> &items);

    QTreeWidget *m_list = nullptr;
    int m_left = 0;
};
