#pragma once

#include "controllerfixture.h"

#include <QObject>
#include <QTest>

#include <memory>

/// The base of the controller's tests: a fresh fixture for each test function, and "nothing left" at its end.
class ControllerTest : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    std::unique_ptr<ControllerFixture> f;
};
