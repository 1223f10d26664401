#include "benchmarks/benchmarks.h"
#include "benchmarks/floormodel.h"

#include "browser/cnbrowser.h"
#include "browser/cnbrowserhelper.h"
#include "tests/support/world.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>

namespace {

QByteArray wideListing()
{
    QFile file(inputFolder + "/wide");
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No input %s", qPrintable(file.fileName()));
    return file.readAll();
}

void load(cnbrowser* browser)
{
    browser->setDomainInfo(QStringLiteral("example.com"), QStringLiteral("admin"),
                           QStringLiteral("secret"));
    QEventLoop running;
    QObject::connect(browser, &cnbrowser::treeDrawingDone, &running, &QEventLoop::quit);
    browser->createTree();
    running.exec();
}

QModelIndex widestBelow(const QAbstractItemModel* model, const QModelIndex& parent)
{
    QModelIndex widest = model->index(0, 0, parent);
    for (int row = 1; row < model->rowCount(parent); ++row) {
        const QModelIndex other = model->index(row, 0, parent);
        if (model->rowCount(other) > model->rowCount(widest))
            widest = other;
    }
    return widest;
}

void handleEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
}

// Shows the dialog, expands the path to the wide level and scrolls through that.
void show(QDialog* dialog)
{
    dialog->show();
    handleEvents();
    auto* view = dialog->findChild<QTreeView*>();
    constexpr int levelsToTheWideOne = 4;
    QModelIndex open;
    for (int i = 0; i < levelsToTheWideOne; ++i) {
        open = widestBelow(view->model(), open);
        view->expand(open);
        handleEvents();
    }
    if (view->model()->rowCount(open) < 50000)
        qFatal("The wide level is missing");
    QScrollBar* bar = view->verticalScrollBar();
    constexpr int steps = 200;
    for (int step = 1; step <= steps; ++step) {
        bar->setValue(bar->maximum() / steps * step);
        handleEvents();
    }
}

void browserShown(benchmark::State& state)
{
    needApplication();
    World::answer(QStringLiteral("mvedit"), {wideListing(), ""});
    cnbrowser browser(nullptr);
    measure(state, [&] {
        load(&browser);
        show(&browser);
    });
}

void floorModelShown(benchmark::State& state)
{
    needApplication();
    cnbrowserhelper helper;
    Level tree;
    const QByteArray output = wideListing();
    World::answer(QStringLiteral("mvedit"), {output, ""});
    const QStringList names = QString::fromUtf8(output).split(QLatin1Char('\n'));
    for (const QString& name : names)
        helper.parseCNData(name, &tree);
    const std::vector<ReadyTexts> texts = readyTexts(tree);
    cnbrowser browser(nullptr);
    auto* view = browser.findChild<QTreeView*>();
    measure(state, [&] {
        // As in browserShown the script is run and its output read; but the model's texts were made
        // before.
        QEventLoop running;
        QObject::connect(&helper, &cnbrowserhelper::cnDataObtained, &running, &QEventLoop::quit);
        helper.getCNData();
        running.exec();
        auto* model = new QStandardItemModel(view);
        appendItems(texts, model->invisibleRootItem());
        view->setModel(model);
        show(&browser);
    });
}

void treeBuilt(benchmark::State& state)
{
    answerWithListing(state);
    cnbrowser browser(nullptr);
    measure(state, [&] { load(&browser); });
}

void treeReleased(benchmark::State& state)
{
    answerWithListing(state);
    cnbrowser browser(nullptr);
    load(&browser);
    browser.show();
    handleEvents();
    measure(state, [&] { browser.clearData(); });
}

BENCHMARK(browserShown)->Iterations(1)->UseManualTime();
BENCHMARK(floorModelShown)->Iterations(1)->UseManualTime();
BENCHMARK(treeBuilt)->Iterations(1)->UseManualTime()->Args({100000, 0});
BENCHMARK(treeReleased)->Iterations(1)->UseManualTime()->Args({100000, 0});

} // namespace
