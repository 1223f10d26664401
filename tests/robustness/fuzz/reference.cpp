#include "tests/robustness/fuzz/reference.h"

#include <QMap>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

struct Node {
    QString prefix;
    QMap<QString, std::shared_ptr<Node>> below;
};

// From the right; blanks at the ends of what is left are taken away at each step.
void insert(QString rest, Node& level)
{
    Node* node = &level;
    while (!(rest = rest.trimmed()).isEmpty()) {
        const int comma = rest.lastIndexOf(',');
        const QString component = rest.mid(comma + 1);
        if (component.isEmpty())
            return;
        std::shared_ptr<Node>& child = node->below[component.mid(3)];
        if (!child)
            child = std::make_shared<Node>(Node{component.left(3), {}});
        if (comma < 0)
            return;
        node = child.get();
        rest = rest.left(comma);
    }
}

void list(const Node& node, const QString& indent, QStringList& lines)
{
    for (auto child = node.below.cbegin(); child != node.below.cend(); ++child) {
        lines << indent + child.value()->prefix + child.key();
        list(*child.value(), indent + ' ', lines);
    }
}

} // namespace

void Reference::check(bool holds, const char* claim)
{
    if (holds)
        return;
    fprintf(stderr, "Does not hold: %s\n", claim);
    abort();
}

QList<QByteArray> Reference::pieces(QByteArray output)
{
    QList<QByteArray> read;
    while (!output.isEmpty()) {
        const int line = output.indexOf('\n') + 1;
        const int size = line > 0 && line < 511 ? line : qMin(511, output.size());
        read << QByteArray(output.left(size).constData());
        output.remove(0, size);
    }
    return read;
}

QStringList Reference::tree(const QString& lines)
{
    Node top;
    const QStringList names = lines.split('\n');
    for (const QString& name : names)
        insert(name, top);
    QStringList texts;
    list(top, {}, texts);
    return texts;
}

Reference::Runner& Reference::Runner::installed()
{
    static Runner runner;
    g_pProcess = &runner;
    return runner;
}

int Reference::Runner::setupauth()
{
    return 0;
}

int Reference::Runner::runPrivCmd(char*, char** args, FILE** pipe)
{
    arguments = args;
    *pipe = output.isEmpty() ? fopen("/dev/null", "r")
                             : fmemopen(output.data(), static_cast<size_t>(output.size()), "r");
    return status;
}
