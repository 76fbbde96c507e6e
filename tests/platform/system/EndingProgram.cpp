// A program that ends in the way its first argument names, for TestProcess to watch.

#include "platform/system/QtEvents.h"
#include "platform/system/QtProcess.h"

#include <QCoreApplication>
#include <QThread>

#include <cstdio>
#include <iostream>

namespace {

struct Leaving {
    ~Leaving() { std::puts("a destructor ran"); }
};
Leaving g_leaving;

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    platform::QtProcess process(QCoreApplication::applicationDirPath());
    platform::QtEvents events;
    const QString how = application.arguments().value(1);
    std::printf("not flushed yet;");
    std::cout << "nor this;";

    if (how == QLatin1String("folder")) {
        std::printf("%s;%s", qPrintable(process.ApplicationFolder()), qPrintable(process.Title()));
        process.End();
    }
    if (how == QLatin1String("code"))
        process.End(7);
    if (how == QLatin1String("wait")) {
        // From three waits within one another, with a thread still at work.
        QThread thread;
        thread.start();
        for (int depth = 0; depth < 3; ++depth) {
            events.Post([&, depth] {
                const Leaving here;
                if (depth == 2)
                    process.End(5);
                while (true)
                    events.Pump();
            });
        }
        return QCoreApplication::exec();
    }
    return 99;
}
