#include "benchmarks/benchmarks.h"
#include "benchmarks/floormodel.h"

#include "browser/cnbrowserhelper.h"

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

// The peer of outputToModel: OpenLDAP parses each name, and a model gets ready-made texts.
void outputParsedByOpenLdapAndReadyTextsToModel(benchmark::State& state)
{
    const std::vector<ReadyTexts> texts = readyTexts(*newTree(lines(state)));
    const QByteArrayList names = listing(state).trimmed().split('\n');
    measure(state, [&] {
        for (const QByteArray& name : names) {
            LDAPDN parsed = nullptr;
            if (ldap_str2dn(name.constData(), &parsed, LDAP_DN_FORMAT_LDAPV3) != LDAP_SUCCESS)
                qFatal("Not a distinguished name: %s", name.constData());
            ldap_dnfree(parsed);
        }
        benchmark::DoNotOptimize(newFloorModel(texts));
    });
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

BENCHMARK(treeToModel)->Apply(allSizes);
BENCHMARK(readyTextsToModel)->Apply(allSizes);
BENCHMARK(outputToModel)->Apply(allSizes);
BENCHMARK(outputToModel)->Name("outputToModelOnce")->Apply(allSizes)->Iterations(1);
BENCHMARK(outputParsedByOpenLdapAndReadyTextsToModel)->Apply(allSizes);

} // namespace
