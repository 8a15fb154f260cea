// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "dom/TreeTotals.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace bench {

/// A loaded document.
class Tree {
public:
    virtual ~Tree() = default;

    /// Visits every node in document order, touches its name, its value and those of its
    /// attributes, and adds their lengths to `totals`.
    virtual void Walk(TreeTotals& totals) const = 0;
};

/// Loads a document from memory; nothing but the tree is left.
/// \throws std::exception when the document is refused
using LoadTree = std::unique_ptr<Tree> (*)(std::string_view document);

// One file for each library.
std::unique_ptr<Tree> LoadEspalierTree(std::string_view document);
std::unique_ptr<Tree> LoadLibxmlTree(std::string_view document);
std::unique_ptr<Tree> LoadPugixmlFullTree(std::string_view document);
std::unique_ptr<Tree> LoadPugixmlTree(std::string_view document);
std::unique_ptr<Tree> LoadTinyxml2Tree(std::string_view document);
std::unique_ptr<Tree> LoadQtTree(std::string_view document);
std::unique_ptr<Tree> LoadXercesTree(std::string_view document);
std::string LibxmlTreeVersion();
std::string PugixmlTreeVersion();
std::string Tinyxml2TreeVersion();
std::string QtTreeVersion();
std::string XercesTreeVersion();

/// The libraries, in the order of TreeLibraries().
enum TreeLibraryIndex {
    kEspalierTree,
    kLibxmlTree,
    kPugixmlFullTree,
    kPugixmlTree,
    kTinyxml2Tree,
#ifdef ESPALIER_HAS_QT
    kQtTree,
#endif
#ifdef ESPALIER_HAS_XERCES
    kXercesTree,
#endif
    kTreeLibraryCount
};

/// What of a document is in the tree.
enum class TreeContent {
    Whole,   ///< everything
    Reduced  ///< no texts of white space alone, and not all of comments and instructions
};

/// A library to compare.
struct TreeLibrary {
    const char* title;
    const char* shortTitle;  ///< as in tables
    LoadTree load;
    TreeContent content;
    bool (*takes)(const CorpusEntry& entry);  ///< whether it can load a file at all
    std::string (*version)();
};

/// Returns all libraries, ours first.
std::span<const TreeLibrary, kTreeLibraryCount> TreeLibraries();

/// Loads and walks all documents of `file`, and frees each tree before the next.
TreeTotals VisitTrees(const TreeLibrary& library, const CorpusFile& file);

/// Visits `file` with every library that takes it and compares the sums.
/// \return an empty text when they agree, else which library found something else, or refused the
///     file
std::string TreeDisagreement(const CorpusFile& file);

}  // namespace bench
