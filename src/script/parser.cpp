// What each character of a script does where it stands: blocks, names and values.

#include "script/parser.h"

#include "script/characters.h"

#include <algorithm>
#include <utility>

namespace Zel {

Script::Parser::Parser(std::string const& fileName)
    : m_fileName(fileName),
      m_tree(std::make_unique<Tree>()),
      m_source(fileName, m_tree->budget),
      m_levels(&m_tree->budget),
      m_header(&m_tree->budget),
      m_value(&m_tree->budget) {}

std::unique_ptr<Script::Tree> Script::Parser::parse() {
    m_tree->expect(m_source.size());
    try {
        m_tree->addBlock("ROOT", nullptr);
        parseText();
        m_tree->index(m_tree->blocks.front(), 0);
    } catch (Budget::Exceeded const&) {
        throw ScriptPreprocessorException_TooLarge(m_source.getFileName().c_str(), m_source.getLine());
    }
    return std::move(m_tree);
}

void Script::Parser::parseText() {
    while (auto const character = peekChar()) {
        if (*character == '[')
            parseBlock();
        else if (isBlank(*character))
            m_source.advance();
        else
            throwSyntaxError();
    }
    if (m_braceCount != 0)
        throw ScriptException_BracketCountMismatch(m_fileName.c_str(), "{ }");
}

/// The next character other than a line break. Line breaks never count, not even inside quotes.
std::optional<char> Script::Parser::peekChar() {
    std::optional<char> character = m_source.peek();
    while (character && (*character == '\r' || *character == '\n')) {
        m_source.advance();
        character = m_source.peek();
    }
    return character;
}

char Script::Parser::readChar() {
    auto const character = peekChar();
    if (!character)
        throw ScriptException_UnexpectedEndOfFile(m_source.getFileName().c_str());
    m_source.advance();
    return *character;
}

void Script::Parser::throwSyntaxError() const {
    throw ScriptException_SyntaxError(m_source.getFileName().c_str(), m_source.getLine());
}

/// One block of ROOT with all blocks inside it. m_levels holds the open ones: a function that calls itself
/// for each would overflow the call stack where blocks are nested deep enough.
void Script::Parser::parseBlock() {
    openBlock(m_tree->blocks.front());
    while (!m_levels.empty()) {
        if (auto const character = peekChar())
            handleCharacter(*character);
        else if (m_levels.back().expectingName)
            leaveBlock();
        else // the text ends inside an assignment or a pair of braces
            throw ScriptException_UnexpectedEndOfFile(m_source.getFileName().c_str());
    }
}

void Script::Parser::openBlock(Block& parent) {
    readHeader();
    m_levels.push_back({&m_tree->addBlock(m_header, &parent), std::pmr::string(&m_tree->budget)});
}

/// The block is complete.
void Script::Parser::leaveBlock() {
    m_tree->index(*m_levels.back().block, m_levels.back().variableCount);
    m_levels.pop_back();
}

/// The name between the brackets. No blanks are allowed there.
void Script::Parser::readHeader() {
    readChar(); // the opening bracket, which the caller has seen
    m_header.clear();
    for (char character = readChar(); character != ']'; character = readChar()) {
        if (!isOfKind(character, kWord))
            throwSyntaxError();
        m_header += character;
        m_header += m_source.takeRun(kWord);
    }
}

void Script::Parser::handleCharacter(char character) {
    bool const mayEndBlock = (character == '[' || character == '}') && !m_inQuotes;
    if (!mayEndBlock) // these two may belong to the enclosing block
        m_source.advance();

    if (character == '"')
        handleQuote();
    else if (m_inQuotes || isOfKind(character, kWord))
        handleWordCharacter(character);
    else
        handlePunctuation(character);
}

/// Meant: the quote that begins a value is kept as its first character, and marks it as a string. All other
/// quotes only begin or end quoting.
void Script::Parser::handleQuote() {
    if (!m_inValue)
        throwSyntaxError();
    m_inQuotes = !m_inQuotes;
    if (m_inQuotes && m_value.empty())
        m_value += '"';
}

/// Appends the character, and those behind it that go on in the same way, to the name or to the value.
void Script::Parser::handleWordCharacter(char character) {
    if (m_levels.back().expectingName) {
        m_levels.back().name += character;
        m_levels.back().name += m_source.takeRun(kWord);
    } else if (m_inValue) {
        m_value += character;
        m_value += m_source.takeRun(m_inQuotes ? kQuoted : kValue);
    } else {
        throwSyntaxError();
    }
}

void Script::Parser::handlePunctuation(char character) {
    if (isOfKind(character, kValueMark))
        return appendToValue(character);
    switch (character) {
    case '=':
        return beginValue();
    case ';':
        return endAssignment();
    case '[':
        return handleOpeningBracket();
    case '{':
        return openBrace();
    case '}':
        return closeBrace();
    case ' ':
    case '\t':
        return; // blanks vanish from names and values
    default:
        throwSyntaxError();
    }
}

void Script::Parser::appendToValue(char character) {
    if (!m_inValue)
        throwSyntaxError();
    m_value += character;
    m_value += m_source.takeRun(kValue);
}

void Script::Parser::beginValue() {
    if (!m_levels.back().expectingName)
        throwSyntaxError();
    m_levels.back().expectingName = false;
    m_inValue = true;
    m_value.clear();
}

void Script::Parser::endAssignment() {
    Level& level = m_levels.back();
    if (!m_inValue || level.name.empty() || m_value.empty())
        throwSyntaxError();
    addVariable(level);
    level.expectingName = true;
    level.name.clear();
    m_inValue = false;
}

/// It begins an interval, a child block, or the next block beside this one.
void Script::Parser::handleOpeningBracket() {
    if (m_inValue) {
        m_source.advance();
        m_value += '[';
    } else if (m_levels.back().hasBraces) {
        openBlock(*m_levels.back().block);
    } else {
        leaveBlock(); // the bracket stays unread for the enclosing block
    }
}

/// Meant: no name is expected from here on. A block's own variables stand before its brace.
void Script::Parser::openBrace() {
    ++m_braceCount;
    m_levels.back().hasBraces = true;
    m_levels.back().expectingName = false;
}

void Script::Parser::closeBrace() {
    if (m_levels.back().hasBraces) {
        --m_braceCount;
        m_source.advance();
    } // else the brace stays unread for the enclosing block
    leaveBlock();
    m_inValue = false; // Meant: an assignment that a brace cuts off is dropped.
}

void Script::Parser::addVariable(Level& level) {
    std::string_view const text = m_value.starts_with('"') ? std::string_view() : m_value;
    StoredVariable& variable = newVariable(level.name, text, typedValue(level.name));
    (level.lastVariable != nullptr ? level.lastVariable->next : level.block->firstVariable) = &variable;
    level.lastVariable = &variable;
    ++level.variableCount;
}

ScriptValue Script::Parser::typedValue(std::pmr::string const& name) {
    if (m_value.starts_with('"')) {
        m_tree->budget.hold(m_value.size());
        return &m_tree->strings.emplace_back(processEscapes(std::string_view(m_value).substr(1)));
    }
    auto const value = parseValue(m_value);
    if (!value)
        throwSyntaxError();
    auto const* const interval = std::get_if<IntervalTemplate<float>>(&*value);
    if (interval != nullptr && interval->min > interval->max)
        throw ScriptException_InvalidInterval(m_source.getFileName().c_str(), m_source.getLine(),
                                              name.c_str());
    return *value;
}

Script::StoredVariable& Script::Parser::newVariable(std::string_view name, std::string_view text,
                                                    ScriptValue const& value) {
    auto* const characters = static_cast<char*>(m_tree->memory.allocate(name.size() + text.size(), 1));
    std::copy(text.begin(), text.end(), std::copy(name.begin(), name.end(), characters));
    return m_tree->variables.emplace_back(StoredVariable{characters, static_cast<std::uint32_t>(name.size()),
                                                         static_cast<std::uint32_t>(text.size()), nullptr,
                                                         value});
}

} // namespace Zel
