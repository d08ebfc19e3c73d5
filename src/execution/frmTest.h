// SPDX-License-Identifier: GPL-3.0-or-later
// The report preview. It shows the report that is CurrentReport at its load, and keeps that report alive.
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

    // Makes it a window of its own instead of a child window of the frame; it is destroyed when it is closed.
    void StandAlone();
    // Shows the window before the report runs. A second load shows the report that is open then.
    void Form_Load();
    void Form_Resize();
    void CloseWindow();  // also closes the child window that holds it
    // Closed windows are destroyed when events run.
    bool IsClosed() const { return m_closed; }

 protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    void ShowWindow();
    void ViewCurrentReport();
    // Sizes the viewer to the window. Raises 380 "Invalid property value" for a negative size.
    void PlaceReport();
    void SetReportWidth();
    void SetReportHeight();

    std::unique_ptr<Ui::frmTest> m_ui;
    bool m_closed = false, m_standsAlone = false;
};
