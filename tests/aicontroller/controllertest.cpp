#include "controllertest.h"

void ControllerTest::init()
{
    f = std::make_unique<ControllerFixture>();
}

void ControllerTest::cleanup()
{
    const QStringList leftovers = f->leftovers();
    f.reset();
    QCOMPARE(leftovers.join(QLatin1Char('\n')), QString());
}
