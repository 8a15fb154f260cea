// SPDX-License-Identifier: MIT
// Counts the elements of all files of a folder, several files at a time: read_in_threads FOLDER
#include <espalier/io/Exception.h>
#include <espalier/xml.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <filesystem>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

//! [read in threads]
// Returns the number of elements of each file, -1 for those that are not well-formed.
std::vector<long> CountElements(const std::vector<std::string>& files) {
    std::vector<long> counts(files.size());
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        Xml::XmlTextReader reader;  // each thread has its own
        for (std::size_t i = next++; i < files.size(); i = next++) {
            try {
                reader.Open(files[i].c_str());
                while (reader.Read()) {
                    if (reader.NodeType() == Xml::XmlNodeType::Element) ++counts[i];
                }
            } catch (const Xml::Exception&) {
                counts[i] = -1;
            }
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
    return counts;
}
//! [read in threads]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: read_in_threads FOLDER\n";
        return 2;
    }
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
        if (entry.path().extension() == ".xml") files.push_back(entry.path().string());
    std::ranges::sort(files);
    const std::vector<long> counts = CountElements(files);
    for (std::size_t i = 0; i < files.size(); ++i) {
        std::cout << std::filesystem::path(files[i]).filename().string() << ": " << counts[i]
                  << "\n";
    }
}
