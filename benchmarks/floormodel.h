#pragma once

#include "browser/cnleaf.h"

#include <QString>

#include <vector>

class QStandardItem;

// The texts of a tree, ready to be put into items.
struct ReadyTexts {
    QString text;
    std::vector<ReadyTexts> below;
};

std::vector<ReadyTexts> readyTexts(const Level& level);

// A plain model of Qt's own items: an item for each text, each appended as a row.
void appendItems(const std::vector<ReadyTexts>& texts, QStandardItem* parent);
