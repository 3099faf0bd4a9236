// Builds the tree of a script from the characters that the preprocessor gives.
#pragma once

#include "script/preprocessor.h"
#include "script/tree.h"

#include <memory>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zel {

/// Whatever is not allowed where it stands is a syntax error. Blocks may be nested as deep as memory allows.
class Script::Parser {
public:
    explicit Parser(std::string const& fileName);

    /// Reads the whole script. Throws what the constructor of Script throws. To be called once.
    std::unique_ptr<Tree> parse();

private:
    /// A block whose end has not been read.
    struct Level {
        Block* block;
        std::pmr::string name; // of the variable that is being read
        StoredVariable* lastVariable = nullptr;
        std::size_t variableCount = 0;
        bool expectingName = true;
        bool hasBraces = false;
    };

    std::optional<char> peekChar();
    char readChar();
    [[noreturn]] void throwSyntaxError() const;

    void parseText();
    void parseBlock();
    void openBlock(Block& parent);
    void leaveBlock();
    void readHeader();
    void handleCharacter(char character);
    void handleQuote();
    void handleWordCharacter(char character);
    void handlePunctuation(char character);
    void appendToValue(char character);
    void beginValue();
    void endAssignment();
    void handleOpeningBracket();
    void openBrace();
    void closeBrace();
    void addVariable(Level& level);
    ScriptValue typedValue(std::pmr::string const& name);
    StoredVariable& newVariable(std::string_view name, std::string_view text, ScriptValue const& value);

    std::string m_fileName;
    std::unique_ptr<Tree> m_tree; // before the members that take memory from its budget
    ScriptPreprocessor m_source;
    std::pmr::vector<Level> m_levels; // the open blocks; the last is being read
    std::pmr::string m_header;
    std::pmr::string m_value;
    bool m_inValue = false;
    bool m_inQuotes = false;
    int m_braceCount = 0;
};

} // namespace Zel
