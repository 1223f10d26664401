#include "tests/support/reference.h"

#include <QMap>

#include <memory>

namespace {

struct Node {
    QString prefix;
    QMap<QString, std::shared_ptr<Node>> below;
};

// Inserts a name's components from the right. What is left of it is trimmed at each step; an empty
// component ends it.
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

QList<QByteArray> Reference::pieces(const QByteArray& output)
{
    QList<QByteArray> read;
    for (int start = 0; start < output.size();) {
        QByteArray piece = output.mid(start, 511);
        const int line = piece.indexOf('\n') + 1;
        if (line > 0)
            piece.truncate(line);
        read << QByteArray(piece.constData());
        start += piece.size();
    }
    return read;
}

QString Reference::decoded(const QByteArray& output)
{
    QString text;
    const QList<QByteArray> read = pieces(output);
    for (const QByteArray& piece : read)
        text += QString::fromUtf8(piece);
    return text;
}

QString Reference::undecoded(const QByteArray& output)
{
    return QString::fromUtf8(pieces(output).join());
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
