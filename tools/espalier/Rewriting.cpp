// SPDX-License-Identifier: MIT
#include "Rewriting.h"

#include "NodeQueue.h"
#include "SourceReader.h"

namespace Tool {

void Rewrite(Document& document, const Rewriting& rewriting, IO::Stream& out,
             const std::function<void(std::string_view)>& observer) {
    SourceReader source(document);
    document.Observe([&](std::string_view bytes) {
        source.Take(bytes);
        observer(bytes);
    });
    source.Start();
    Target target = document.DeclaresFormerEncoding()
                        ? Target::Recoded(source.Head())
                        : Target::Same(document.Reader().Encoding().view(), source.Head());
    if (rewriting.to) target = Target::Other(*rewriting.to, target);
    if (!target.HasAllCharacters()) source.TellPlaces();
    NodeQueue nodes(source);
    Formatter(nodes, target, rewriting.layout, out).Run();
}

}  // namespace Tool
