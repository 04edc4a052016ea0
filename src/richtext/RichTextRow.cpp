// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextRow.h"

#include <algorithm>
#include <unordered_map>

namespace tessel {

namespace {

constexpr qsizetype kMostColumns = 64;
constexpr int kFarthestEdge = 31680;

using Edge = RichTextColumn::Edge;

struct Edges {
    bool wholeRow;
    int edges;  // none for those of a paragraph: what is said about them is passed over
};

const std::unordered_map<std::string_view, Edges>& edgeWords() {
    static const std::unordered_map<std::string_view, Edges> words = {
        {"clbrdrt", {false, Edge::kTop}},
        {"clbrdrl", {false, Edge::kLeft}},
        {"clbrdrb", {false, Edge::kBottom}},
        {"clbrdrr", {false, Edge::kRight}},
        {"trbrdrt", {true, Edge::kTop}},
        {"trbrdrl", {true, Edge::kLeft}},
        {"trbrdrb", {true, Edge::kBottom}},
        {"trbrdrr", {true, Edge::kRight}},
        {"trbrdrh", {true, Edge::kTop | Edge::kBottom}},
        {"trbrdrv", {true, Edge::kLeft | Edge::kRight}},
        {"brdrt", {false, 0}},
        {"brdrl", {false, 0}},
        {"brdrb", {false, 0}},
        {"brdrr", {false, 0}},
        {"box", {false, 0}},
        {"chbrdr", {false, 0}},
    };
    return words;
}

bool drawsLine(std::string_view word) {
    return word == "brdrs" || word == "brdrth" || word == "brdrdb" || word == "brdrdot" ||
           word == "brdrdash" || word == "brdrhair" || word == "brdrsh" || word == "brdrtriple";
}

bool drawsNone(std::string_view word) {
    return word == "brdrnone" || word == "brdrnil";
}

}  // namespace

bool RichTextRow::alike(const RichTextRow& other) const {
    return left == other.left &&
           std::equal(columns.begin(), columns.end(), other.columns.begin(), other.columns.end(),
                      [](const auto& a, const auto& b) { return a.edge == b.edge; });
}

bool RichTextRowDefinition::apply(const RichTextToken& word) {
    if (word.text == "trowd") {
        *this = {};
    } else if (word.text == "trleft") {
        row_.left = std::clamp(word.number, -kFarthestEdge, kFarthestEdge);
    } else if (word.text == "cellx") {
        addColumn(word.number);
    } else if (word.text == "clmrg") {
        next_.continues = true;
    } else if (word.text == "clcbpat") {
        next_.background = word.number;
    } else {
        return applyToEdges(word);
    }
    return true;
}

bool RichTextRowDefinition::applyToEdges(const RichTextToken& word) {
    if (drawsLine(word.text) || drawsNone(word.text)) {
        draw(drawsLine(word.text));
        return true;
    }
    const auto found = edgeWords().find(word.text);
    if (found == edgeWords().end()) return false;
    wholeRow_ = found->second.wholeRow;
    chosenEdges_ = found->second.edges;
    return true;
}

void RichTextRowDefinition::draw(bool drawn) {
    int& lines = wholeRow_ ? rowLines_ : next_.lines;
    lines = drawn ? lines | chosenEdges_ : lines & ~chosenEdges_;
}

void RichTextRowDefinition::addColumn(int edge) {
    next_.edge = std::clamp(edge, -kFarthestEdge, kFarthestEdge);
    next_.lines |= rowLines_;
    if (row_.columns.size() < kMostColumns) row_.columns << next_;
    next_ = {};
    chosenEdges_ = 0;
}

}  // namespace tessel
