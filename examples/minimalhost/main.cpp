#include "minimalhost.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("minimalhost"));
    const QStringList arguments = QCoreApplication::arguments();
    MinimalHost host(arguments.value(1, QStringLiteral("http://127.0.0.1:8080")));
    host.panel().show();
    return QCoreApplication::exec();
}
