#include "application.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <memory>

namespace {

std::unique_ptr<QCoreApplication> makeApplication()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return QCoreApplication::instance() ? nullptr : std::make_unique<QCoreApplication>(argc, argv);
}

} // namespace

void needApplication()
{
    static const std::unique_ptr<QCoreApplication> application = makeApplication();
}
