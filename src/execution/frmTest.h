// The report preview: shows the report that is open when it is loaded, and keeps it.
#pragma once

#include <QWidget>
#include <memory>

namespace Ui {
class frmTest;
}

class frmTest : public QWidget {
    Q_OBJECT
 public:
    explicit frmTest(QWidget* parent = nullptr);
    ~frmTest() override;

    // It is no child window of the frame; destroyed when it is closed.
    void StandAlone();
    // Shows itself before the report runs. Loading it once more shows the report that is open then.
    void Form_Load();
    void Form_Resize();
    void CloseWindow();  // with the child window that it stands in
    // Closed, and gone as soon as events run.
    bool IsClosed() const { return m_closed; }

 protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    void ShowWindow();
    void ViewCurrentReport();
    // The layout in its statements. 380 "Invalid property value" for a size below nothing.
    void PlaceReport();
    void SetReportWidth();
    void SetReportHeight();

    std::unique_ptr<Ui::frmTest> m_ui;
    bool m_closed = false, m_standsAlone = false;
};
