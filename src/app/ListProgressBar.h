#pragma once
// ListProgressBar: the bar prgBar over the data list with the button btnTab1_Abort, as
// the list commands drive it through ListProgress. Hidden while no command runs. The
// abort button sets AbortRequested, which the long loops poll.

#include "list/modListEnv.h"

#include <QElapsedTimer>
#include <QWidget>

class QProgressBar;
class QPushButton;

class ListProgressBar : public QWidget, public ListProgress {
    Q_OBJECT
public:
    explicit ListProgressBar(QWidget* parent = nullptr);

    void ShowProgress(int max, int keepButtons) override;
    void SetProgress(int value) override;
    void HideProgress() override;

    QProgressBar* prgBar;
    QPushButton* btnTab1_Abort;

private:
    QElapsedTimer m_sincePaint;
};
