#include "benchmarks/floormodel.h"

#include <QStandardItem>

std::vector<ReadyTexts> readyTexts(const Level& level)
{
    std::vector<ReadyTexts> texts;
    texts.reserve(static_cast<size_t>(level.size()));
    for (auto entry = level.cbegin(); entry != level.cend(); ++entry) {
        cnleaf* leaf = entry.value();
        texts.push_back({leaf->getPrefix() + entry.key(), {}});
        if (leaf->getNode() != nullptr)
            texts.back().below = readyTexts(*leaf->getNode());
    }
    return texts;
}

void appendItems(const std::vector<ReadyTexts>& texts, QStandardItem* parent)
{
    for (const ReadyTexts& ready : texts) {
        auto* item = new QStandardItem(ready.text);
        appendItems(ready.below, item);
        parent->appendRow(item);
    }
}
