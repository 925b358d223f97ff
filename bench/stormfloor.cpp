// The floor of the storm: a bare QWebEngineView that drops every window its
// page asks for. Prints what storm.cpp prints.
#include "BenchPage.h"
#include "LoopWatch.h"

#include <QApplication>
#include <QScreen>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineView>

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 3)
        return 2;
    const int expected = args[2].toInt();

    QWebEngineView view;
    view.setGeometry(view.screen()->availableGeometry());
    view.showMaximized();

    LoopWatch heart;
    const qint64 started = bench::now();
    int windows = 0;
    std::unique_ptr<LoopWatch> during;
    QObject::connect(view.page(), &QWebEnginePage::newWindowRequested, &app,
                     [&](QWebEngineNewWindowRequest&) {
                         if (!during)
                             during = std::make_unique<LoopWatch>();
                         if (++windows < expected)
                             return;
                         bench::report("storm", bench::now() - started);
                         bench::report("gap", heart.longestGapMs());
                         bench::report("stormgap", during->longestGapMs());
                         bench::report("tabs", 1);
                         QCoreApplication::exit(0);
                     });
    view.load(QUrl::fromUserInput(args[1]));
    return QApplication::exec();
}
