// SPDX-License-Identifier: GPL-3.0-or-later
#include "richtext/RichTextFormats.h"

namespace tessel {

// The control words that change characters and paragraphs.

namespace {

constexpr qsizetype kMostTabs = 32;

using Characters = RichTextCharacters;
using Paragraph = RichTextParagraph;
using Token = RichTextToken;

// A word like \b switches on, \b0 off.
bool on(const Token& token) {
    return token.numberOr(1) != 0;
}

template <bool Characters::*Member>
void set(Characters& c, const Token& token) {
    c.*Member = on(token);
}

template <auto Member>
void setNumber(auto& properties, const Token& token) {
    properties.*Member = token.number;
}

template <QTextCharFormat::UnderlineStyle Style>
void underline(Characters& c, const Token& token) {
    c.underline = on(token) ? Style : QTextCharFormat::NoUnderline;
}

template <QTextCharFormat::VerticalAlignment Position>
void place(Characters& c, const Token& token) {
    c.position = on(token) ? Position : QTextCharFormat::AlignNormal;
}

template <QFont::Capitalization Capitals>
void capitalize(Characters& c, const Token& token) {
    c.capitals = on(token) ? Capitals : QFont::MixedCase;
}

template <Qt::AlignmentFlag Alignment>
void align(Paragraph& p, const Token&) {
    p.alignment = Alignment;
}

template <QTextOption::TabType Kind>
void nextTab(Paragraph& p, const Token&) {
    p.nextTab = Kind;
}

void addTab(Paragraph& p, const Token& token) {
    constexpr int kFarthest = 31680;
    if (p.tabs.size() < kMostTabs && token.number > 0 && token.number <= kFarthest)
        p.tabs << QTextOption::Tab(token.number, p.nextTab);
    p.nextTab = QTextOption::LeftTab;
}

void setSize(Characters& c, const Token& token) {
    c.halfPoints = token.numberOr(24);
}

template <class Properties>
using Words = std::unordered_map<std::string_view, void (*)(Properties&, const Token&)>;

const Words<Characters>& characterWords() {
    using Format = QTextCharFormat;
    static const Words<Characters> words = {
        {"plain", [](Characters& c, const Token&) { c = {}; }},
        {"f", setNumber<&Characters::font>},
        {"fs", setSize},
        {"b", set<&Characters::bold>},
        {"i", set<&Characters::italic>},
        {"strike", set<&Characters::strike>},
        {"striked", set<&Characters::strike>},
        {"v", set<&Characters::hidden>},
        {"ul", underline<Format::SingleUnderline>},
        {"ulw", underline<Format::SingleUnderline>},
        {"uldb", underline<Format::SingleUnderline>},
        {"ulth", underline<Format::SingleUnderline>},
        {"uld", underline<Format::DotLine>},
        {"uldash", underline<Format::DashUnderline>},
        {"uldashd", underline<Format::DashDotLine>},
        {"uldashdd", underline<Format::DashDotDotLine>},
        {"ulwave", underline<Format::WaveUnderline>},
        {"ulnone", underline<Format::NoUnderline>},
        {"super", place<Format::AlignSuperScript>},
        {"up", place<Format::AlignSuperScript>},
        {"sub", place<Format::AlignSubScript>},
        {"dn", place<Format::AlignSubScript>},
        {"nosupersub", place<Format::AlignNormal>},
        {"caps", capitalize<QFont::AllUppercase>},
        {"scaps", capitalize<QFont::SmallCaps>},
        {"cf", setNumber<&Characters::colour>},
        {"cb", setNumber<&Characters::background>},
        {"chcbpat", setNumber<&Characters::background>},
        {"highlight", setNumber<&Characters::background>},
    };
    return words;
}

const Words<Paragraph>& paragraphWords() {
    static const Words<Paragraph> words = {
        {"pard", [](Paragraph& p, const Token&) { p = {}; }},
        {"ql", align<Qt::AlignLeft>},
        {"qc", align<Qt::AlignHCenter>},
        {"qr", align<Qt::AlignRight>},
        {"qj", align<Qt::AlignJustify>},
        {"qd", align<Qt::AlignJustify>},
        {"li", setNumber<&Paragraph::left>},
        {"lin", setNumber<&Paragraph::left>},
        {"fi", setNumber<&Paragraph::first>},
        {"ri", setNumber<&Paragraph::right>},
        {"rin", setNumber<&Paragraph::right>},
        {"sb", setNumber<&Paragraph::before>},
        {"sa", setNumber<&Paragraph::after>},
        {"sl", setNumber<&Paragraph::lineHeight>},
        {"slmult", [](Paragraph& p, const Token& token) { p.proportional = token.number == 1; }},
        {"intbl", [](Paragraph& p, const Token& token) { p.inTable = on(token); }},
        {"tx", addTab},
        {"tqr", nextTab<QTextOption::RightTab>},
        {"tqc", nextTab<QTextOption::CenterTab>},
        {"tqdec", nextTab<QTextOption::DelimiterTab>},
    };
    return words;
}

template <class Properties>
bool applyFrom(const Words<Properties>& words, const Token& token, Properties& properties) {
    const auto found = words.find(token.text);
    if (found == words.end()) return false;
    found->second(properties, token);
    return true;
}

}  // namespace

bool apply(const RichTextToken& word, RichTextCharacters& characters) {
    return applyFrom(characterWords(), word, characters);
}

bool apply(const RichTextToken& word, RichTextParagraph& paragraph) {
    return applyFrom(paragraphWords(), word, paragraph);
}

}  // namespace tessel
