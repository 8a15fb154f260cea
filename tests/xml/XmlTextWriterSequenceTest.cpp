// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

// All sequences of a few operations, compared with a model of the writer that is written for being
// read: it has no buffer, no namespaces and no layout, and remembers all that it was told.

namespace {

using support::DocumentWriter;
using support::NameOf;
using Xml::WriteState;
using Xml::XmlTextWriter;

class Model {
public:
    using Message = const char*;  // null when the operation is done

    WriteState State() const { return state_; }
    const std::string& Output() const { return output_; }

    Message StartDocument() {
        if (state_ != WriteState::Start) return "Invalid state";
        output_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
        state_ = WriteState::Prolog;
        return nullptr;
    }

    Message StartElement() {
        EndStartTag();
        const std::string name = "e" + std::to_string(++count_);
        open_.push_back(name);
        output_ += "<" + name;
        inStartTag_ = true;
        state_ = WriteState::Element;
        return nullptr;
    }

    Message EndElement() {
        if (open_.empty()) return "Invalid Operation: Writer not in an element";
        if (state_ == WriteState::Attribute) EndAttribute();
        output_ += inStartTag_ ? "/>" : "</" + open_.back() + ">";
        PopElement();
        return nullptr;
    }

    Message FullEndElement() {
        if (open_.empty()) return "Invalid Operation: Wrong state";
        EndStartTag();
        output_ += "<" + open_.back() + ">" + '\0';
        PopElement();
        return nullptr;
    }

    Message StartAttribute() {
        if (!inStartTag_) return "Invalid state";
        if (state_ == WriteState::Attribute) EndAttribute();
        output_ += " a" + std::to_string(++count_) + "=\"";
        state_ = WriteState::Attribute;
        return nullptr;
    }

    Message EndAttribute() {
        if (state_ != WriteState::Attribute) return "Invalid Operation: Not in attribute";
        output_ += '"';
        state_ = WriteState::Element;
        return nullptr;
    }

    Message Text(const char* text, Message refusal) {
        if (open_.empty()) return refusal;
        if (state_ != WriteState::Attribute) EndStartTag();
        output_ += text;
        return nullptr;
    }

    Message CData() {
        if (state_ == WriteState::Attribute) return "Invalid Operation: Not in content state";
        return Text("<![CDATA[c]]>", "Invalid Operation: Text not allowed in this state");
    }

    Message Markup(const char* markup) {
        EndStartTag();
        output_ += markup;
        if (state_ == WriteState::Start) state_ = WriteState::Prolog;
        return nullptr;
    }

    Message Instruction() {
        if (state_ == WriteState::Attribute) return "Invalid Operation: Wrong state";
        return Markup("<?p d?>");
    }

    Message EndDocument() {
        while (!open_.empty())
            EndElement();
        state_ = WriteState::Start;
        return nullptr;
    }

    // Returns the number that the next element or attribute takes.
    int NextNumber() const { return count_ + 1; }

private:
    // Ends the attribute and the start tag that are open, if they are.
    void EndStartTag() {
        if (!inStartTag_) return;
        if (state_ == WriteState::Attribute) EndAttribute();
        output_ += '>';
        inStartTag_ = false;
        state_ = WriteState::Content;
    }

    void PopElement() {
        open_.pop_back();
        inStartTag_ = false;
        if (!open_.empty()) state_ = WriteState::Content;
    }

    WriteState state_;
    std::string output_;
    std::vector<std::string> open_;  // the names of the elements
    bool inStartTag_ = false;
    int count_ = 0;  // of elements and attributes
};

struct Operation {
    const char* name;
    Model::Message (*onModel)(Model& model);
    void (*onWriter)(XmlTextWriter& writer, const std::string& number);
};

using Number = const std::string&;

const std::array<Operation, 12> kOperations = {{
    {"StartDocument", [](Model& m) { return m.StartDocument(); },
     [](XmlTextWriter& w, Number) { w.WriteStartDocument(); }},
    {"StartElement", [](Model& m) { return m.StartElement(); },
     [](XmlTextWriter& w, Number n) { w.WriteStartElement("e" + n); }},
    {"EndElement", [](Model& m) { return m.EndElement(); },
     [](XmlTextWriter& w, Number) { w.WriteEndElement(); }},
    {"FullEndElement", [](Model& m) { return m.FullEndElement(); },
     [](XmlTextWriter& w, Number) { w.WriteFullEndElement(); }},
    {"StartAttribute", [](Model& m) { return m.StartAttribute(); },
     [](XmlTextWriter& w, Number n) { w.WriteStartAttribute("a" + n); }},
    {"EndAttribute", [](Model& m) { return m.EndAttribute(); },
     [](XmlTextWriter& w, Number) { w.WriteEndAttribute(); }},
    {"String",
     [](Model& m) { return m.Text("&lt;", "Invalid Operation: Text not allowed in this state"); },
     [](XmlTextWriter& w, Number) { w.WriteString("<"); }},
    {"EntityRef", [](Model& m) { return m.Text("&n;", "Invalid Operation: Invalid state"); },
     [](XmlTextWriter& w, Number) { w.WriteEntityRef("n"); }},
    {"CData", [](Model& m) { return m.CData(); },
     [](XmlTextWriter& w, Number) { w.WriteCData("c"); }},
    {"Comment", [](Model& m) { return m.Markup("<!--c-->"); },
     [](XmlTextWriter& w, Number) { w.WriteComment("c"); }},
    {"Instruction", [](Model& m) { return m.Instruction(); },
     [](XmlTextWriter& w, Number) { w.WriteProcessingInstruction("p", "d"); }},
    {"EndDocument", [](Model& m) { return m.EndDocument(); },
     [](XmlTextWriter& w, Number) { w.WriteEndDocument(); }},
}};

constexpr int kLength = 4;

std::string NamesOf(const std::vector<std::size_t>& sequence) {
    std::string names;
    for (const std::size_t index : sequence)
        names += std::string(kOperations[index].name) + " ";
    return names;
}

// Makes the calls on both, and compares messages and states after each and the output in the end.
bool Agrees(const std::vector<std::size_t>& sequence) {
    Model model;
    DocumentWriter writer;
    for (const std::size_t index : sequence) {
        const std::string number = std::to_string(model.NextNumber());
        const Model::Message expected = kOperations[index].onModel(model);
        std::string message;
        try {
            kOperations[index].onWriter(*writer, number);
        } catch (const Xml::Exception& error) {
            message = error.What();
        }
        EXPECT_EQ(message, expected == nullptr ? "" : expected) << NamesOf(sequence);
        EXPECT_STREQ(NameOf(writer->GetWriteState()), NameOf(model.State())) << NamesOf(sequence);
    }
    EXPECT_EQ(writer.Text(), model.Output()) << NamesOf(sequence);
    return !testing::Test::HasFailure();
}

// Goes on to the next sequence of the same length; returns whether there is one.
bool Advance(std::vector<std::size_t>& sequence) {
    for (std::size_t& index : sequence) {
        if (++index < kOperations.size()) return true;
        index = 0;
    }
    return false;
}

TEST(XmlTextWriterSequence, AllSequencesOfOperationsAgreeWithTheModel) {
    std::size_t count = 0;
    for (std::size_t length = 1; length <= kLength; ++length) {
        std::vector<std::size_t> sequence(length, 0);
        do {
            ++count;
            ASSERT_TRUE(Agrees(sequence));
        } while (Advance(sequence));
    }
    EXPECT_EQ(count, 12u + 12u * 12u + 12u * 12u * 12u + 12u * 12u * 12u * 12u);
}

// Longer ones, begun within two elements, where most operations are allowed.
TEST(XmlTextWriterSequence, AllSequencesWithinElementsAgreeWithTheModel) {
    for (const std::vector<std::size_t>& beginning :
         {std::vector<std::size_t>{1, 1}, std::vector<std::size_t>{1, 4},
          std::vector<std::size_t>{1, 6}, std::vector<std::size_t>{1, 2}}) {
        std::vector<std::size_t> rest(3, 0);
        do {
            std::vector<std::size_t> sequence = beginning;
            sequence.insert(sequence.end(), rest.begin(), rest.end());
            ASSERT_TRUE(Agrees(sequence));
        } while (Advance(rest));
    }
}

}  // namespace
