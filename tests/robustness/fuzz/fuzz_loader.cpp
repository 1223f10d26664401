// The container script's whole output and exit status, through the script's process to the model.
// The first byte is the exit status.

#include "browser/cnbrowserhelper.h"
#include "tests/robustness/fuzz/runner.h"
#include "tests/support/world.h"

#include <QEventLoop>
#include <QStandardItemModel>

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    Answer script;
    script.exitStatus = data[0];
    script.output = QByteArray(reinterpret_cast<const char*>(data) + 1, static_cast<int>(size) - 1);
    World::answer("mvedit mvedit_file_arg.tcl", script);
    World::forgetCalls();

    cnbrowserhelper loader;
    QEventLoop loop;
    QObject::connect(&loader, &cnbrowserhelper::cnDataObtained, &loop, &QEventLoop::quit);
    loader.setDomainInfo("example.test", "admin", "secret");
    loader.getCNData();
    loop.exec();

    const QString text = QString::fromUtf8(script.output.constData(), script.output.size());
    const bool usable = script.exitStatus == 0 && text.contains("DC=");
    Fuzz::check(loader.cnDataCheck() == usable, "data are usable with DC= and status 0");
    const std::unique_ptr<QStandardItemModel> model(loader.createModelOutOfCNData());
    Fuzz::check((model != nullptr) == usable, "there is a model when the data are usable");
    if (!usable)
        return 0;
    QStringList texts;
    QStringList names;
    Fuzz::list(*model, &texts, &names);
    Fuzz::check(texts == Reference::tree(text), "the model is the reference's");
    Fuzz::check(loader.createModelOutOfCNData() == nullptr, "the output is used up");
    return 0;
}
