#pragma once

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>

/// A program that ends with the test's process, however that ends, and with this object at the latest.
class ChildProcess : public QProcess {
public:
    ~ChildProcess() override { killNow(); }

    void killNow()
    {
        if (state() == NotRunning)
            return;
        kill();
        waitForFinished();
    }

protected:
    void setupChildProcess() override { ::prctl(PR_SET_PDEATHSIG, SIGKILL); }
};
