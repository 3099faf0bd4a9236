// Builds a script's tree from the preprocessor's characters.
#pragma once

#include "script/preprocessor.h"
#include "script/tree.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Zel {

/// Strict: whatever is not allowed where it stands is a syntax error. Open blocks are kept on a stack of its
/// own, so that blocks may be nested as deep as memory allows.
class Script::Parser {
public:
    explicit Parser(std::string const& fileName);

    /// The whole tree. Throws the exceptions of Script's constructor.
    std::shared_ptr<Tree const> parse();

private:
    /// A block whose end has not been read.
    struct Level {
        explicit Level(Block& openedBlock) : block(&openedBlock) {}

        Block* block;
        bool expectingName = true;
        bool hasBraces = false;
        std::string name; // of the variable being read
    };

    std::optional<char> peekCharacter();
    char readCharacter();
    [[noreturn]] void throwSyntaxError() const;

    void parseTopLevelBlock();
    void openBlock(Block& parent);
    std::string readHeader();
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
    void addVariable(Block& block, std::string const& name);
    ScriptValue typedValue(std::string const& name);
    StoredVariable& newVariable(std::string const& name, std::string const& text, ScriptValue const& value);

    std::string m_fileName;
    ScriptPreprocessor m_source;
    std::shared_ptr<Tree> m_tree;
    std::vector<Level> m_levels; // the last is being read
    std::string m_value;
    bool m_inValue = false;
    bool m_inQuotes = false;
    int m_braceCount = 0;
};

} // namespace Zel
