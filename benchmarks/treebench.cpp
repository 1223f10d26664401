#include "benchmarks/benchmarks.h"
#include "benchmarks/floormodel.h"

#include "browser/cnbrowserhelper.h"
#include "tests/support/world.h"

#include <QEventLoop>
#include <QStandardItemModel>

#include <ldap.h>
#include <malloc.h>

namespace {

QStringList lines(const benchmark::State& state)
{
    return QString::fromUtf8(listing(state)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

Level* newTree(const QStringList& names)
{
    cnbrowserhelper helper;
    auto* tree = new Level;
    for (const QString& name : names)
        helper.parseCNData(name, tree);
    return tree;
}

void linesToTree(benchmark::State& state)
{
    const QStringList names = lines(state);
    measure(state, [&] { benchmark::DoNotOptimize(newTree(names)); });
}

void linesParsedByOpenLdap(benchmark::State& state)
{
    const QByteArrayList names = listing(state).trimmed().split('\n');
    measure(state, [&] {
        for (const QByteArray& name : names) {
            LDAPDN parsed = nullptr;
            if (ldap_str2dn(name.constData(), &parsed, LDAP_DN_FORMAT_LDAPV3) != LDAP_SUCCESS)
                qFatal("Not a distinguished name: %s", name.constData());
            ldap_dnfree(parsed);
        }
    });
}

void treeToModel(benchmark::State& state)
{
    Level* tree = newTree(lines(state));
    cnbrowserhelper helper;
    measure(state, [&] { benchmark::DoNotOptimize(helper.getTreeModel(tree)); });
}

QStandardItemModel* newFloorModel(const std::vector<ReadyTexts>& texts)
{
    auto* model = new QStandardItemModel;
    appendItems(texts, model->invisibleRootItem());
    return model;
}

void readyTextsToModel(benchmark::State& state)
{
    const std::vector<ReadyTexts> texts = readyTexts(*newTree(lines(state)));
    malloc_trim(0);
    const double before = residentMemory();
    measure(state, [&] { benchmark::DoNotOptimize(newFloorModel(texts)); });
    state.counters["bytes"] = residentMemory() - before;
}

// A loader whose script has run and printed the listing.
cnbrowserhelper* newLoader()
{
    auto* loader = new cnbrowserhelper;
    loader->setDomainInfo(QStringLiteral("example.com"), QStringLiteral("admin"),
                          QStringLiteral("secret"));
    QEventLoop running;
    QObject::connect(loader, &cnbrowserhelper::cnDataObtained, &running, &QEventLoop::quit);
    loader->getCNData();
    running.exec();
    return loader;
}

void answerWithListing(const benchmark::State& state)
{
    needApplication();
    Answer answer;
    answer.output = listing(state);
    World::answer(QStringLiteral("mvedit"), answer);
}

void outputToModel(benchmark::State& state)
{
    answerWithListing(state);
    malloc_trim(0);
    const double before = residentMemory();
    for ([[maybe_unused]] auto run : state) {
        cnbrowserhelper* loader = newLoader();
        const double start = processorTime();
        benchmark::DoNotOptimize(loader->createModelOutOfCNData());
        state.SetIterationTime(processorTime() - start);
    }
    state.counters["bytes"] = residentMemory() - before;
}

QStandardItem* childOf(QStandardItem* parent, const QString& text)
{
    for (int row = 0; row < parent->rowCount(); ++row) {
        if (parent->child(row)->text() == text)
            return parent->child(row);
    }
    auto* item = new QStandardItem(text);
    item->setEditable(false);
    parent->appendRow(item);
    return item;
}

void outputToModelStraightforwardly(benchmark::State& state)
{
    const QString output = QString::fromUtf8(listing(state));
    measure(state, [&] {
        auto* model = new QStandardItemModel;
        const QStringList names = output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& name : names) {
            QStandardItem* item = model->invisibleRootItem();
            const QStringList components = name.split(QLatin1Char(','));
            for (int i = components.size() - 1; i >= 0; --i)
                item = childOf(item, components.at(i));
        }
    });
}

BENCHMARK(linesToTree)->Apply(allSizes);
BENCHMARK(linesParsedByOpenLdap)->Apply(allSizes);
BENCHMARK(treeToModel)->Apply(allSizes);
BENCHMARK(readyTextsToModel)->Apply(allSizes);
BENCHMARK(outputToModel)->Apply(allSizes);
BENCHMARK(outputToModel)->Name("outputToModelOnce")->Apply(allSizes)->Iterations(1);
BENCHMARK(outputToModelStraightforwardly)->Apply(allSizes);

} // namespace
