// SPDX-License-Identifier: MIT
// Writes a report on a stock, with two namespaces, and indented: write_report FILE
#include <espalier/espalier.h>

#include <iostream>
#include <string>

namespace {

//! [write report]
constexpr char kReport[] = "https://nursery.example/report";
constexpr char kCheck[] = "https://nursery.example/check";

struct Plant {
    const char* title;
    int stock;
    const char* remark;  // or nothing
};

void WritePlant(Xml::XmlTextWriter& writer, const Plant& plant) {
    writer.WriteStartElement("plant", kReport);
    writer.WriteAttributeString("stock", std::to_string(plant.stock));
    if (plant.stock == 0) writer.WriteAttributeString("order", kCheck, "now");
    writer.WriteElementString("title", kReport, plant.title);
    if (plant.remark != nullptr) writer.WriteElementString("remark", kCheck, plant.remark);
    writer.WriteEndElement();
}

void WriteReport(const char* fileName) {
    const Plant plants[] = {{"Pear 'Doyenn\u00e9 du Comice'", 14, nullptr},
                            {"Morello cherry, fan", 0, "north wall & <3 m>"}};
    Xml::UTF8Encoding utf8;
    Xml::XmlTextWriter writer(fileName, &utf8);
    writer.SetFormatting(Xml::Formatting::Indented);
    writer.SetNewLineChars("\n");
    writer.WriteStartDocument();
    writer.WriteStartElement("report", kReport);
    writer.WriteAttributeString("xmlns", "c", nullptr, kCheck);
    for (const Plant& plant : plants)
        WritePlant(writer, plant);
    writer.WriteEndElement();
    writer.Close();
}
//! [write report]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: write_report FILE\n";
        return 2;
    }
    //! [write errors]
    try {
        WriteReport(argv[1]);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ": " << error.What() << "\n";
        return 1;
    }
    //! [write errors]
    return 0;
}
