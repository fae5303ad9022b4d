#include <varnellib/native/textmeasure.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

namespace Varnel::Lib {

namespace {

// Where each character of `text` ends, in Pango units from the start, laid out as one line:
// every character of a glyph cluster (a ligature) ends where the cluster ends. Empty when the
// text runs right to left somewhere (its clusters then do not follow the characters) or when
// its characters do not map one for one onto UTF-8 sequences.
std::vector<int> characterEnds(PangoLayout* layout, std::wstring_view text) {
    const std::string utf8(String(text).toUtf8().view());
    std::vector<int> byteStarts;
    byteStarts.reserve(text.size());
    for (std::size_t byte = 0; byte < utf8.size(); ++byte)
        if ((static_cast<unsigned char>(utf8[byte]) & 0xC0) != 0x80)
            byteStarts.push_back(static_cast<int>(byte));
    if (byteStarts.size() != text.size())
        return {};
    pango_layout_set_text(layout, utf8.data(), static_cast<int>(utf8.size()));

    // The clusters in order, from the glyphs of the one line (linear; the layout's cluster
    // iterator measures each cluster from the start of its run again).
    std::vector<std::pair<int, int>> clusters;
    PangoLayoutLine* line = pango_layout_get_line_readonly(layout, 0);
    int x = 0;
    for (GSList* run = line ? line->runs : nullptr; run; run = run->next) {
        const auto* glyphs = static_cast<PangoGlyphItem*>(run->data);
        if (glyphs->item->analysis.level % 2 != 0)
            return {};
        for (int glyph = 0; glyph < glyphs->glyphs->num_glyphs; ++glyph) {
            x += glyphs->glyphs->glyphs[glyph].geometry.width;
            const int start = glyphs->item->offset + glyphs->glyphs->log_clusters[glyph];
            if (!clusters.empty() && clusters.back().first == start)
                clusters.back().second = x;
            else
                clusters.emplace_back(start, x);
        }
    }
    if (clusters.empty())
        return {};
    std::sort(clusters.begin(), clusters.end());

    std::vector<int> ends(text.size(), 0);
    std::size_t current = 0;
    int furthest = 0;
    for (std::size_t character = 0; character < text.size(); ++character) {
        while (current + 1 < clusters.size() &&
               clusters[current + 1].first <= byteStarts[character])
            ++current;
        furthest = std::max(furthest, clusters[current].second);
        ends[character] = furthest;
    }
    return ends;
}

} // namespace

std::vector<int> measureTextPrefixes(WindowHandle widget, const String& fontDescription,
                                     std::wstring_view text) {
    auto* gtkWidget = static_cast<GtkWidget*>(widget.native());
    if (!gtkWidget || !GTK_IS_WIDGET(gtkWidget) || text.empty())
        return {};
    std::unique_ptr<PangoLayout, decltype(&g_object_unref)> layout(
        gtk_widget_create_pango_layout(gtkWidget, nullptr), &g_object_unref);
    std::unique_ptr<PangoFontDescription, decltype(&pango_font_description_free)> font(
        pango_font_description_from_string(fontDescription.toUtf8().data()),
        &pango_font_description_free);
    pango_layout_set_font_description(layout.get(), font.get());

    // Words and the spaces between them, each distinct one shaped once: shaping is most of the
    // cost, and text repeats its words.
    std::map<std::wstring_view, std::vector<int>> shaped;
    std::vector<int> widths(text.size(), 0);
    int x = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end =
            text[start] == L' ' ? start + 1 : std::min(text.find(L' ', start), text.size());
        const std::wstring_view token = text.substr(start, end - start);
        auto found = shaped.find(token);
        if (found == shaped.end())
            found = shaped.emplace(token, characterEnds(layout.get(), token)).first;
        const std::vector<int>& ends = found->second;
        if (ends.size() != token.size())
            return {};
        for (std::size_t i = 0; i < ends.size(); ++i)
            widths[start + i] = PANGO_PIXELS(x + ends[i]);
        x += ends.back();
        start = end;
    }
    return widths;
}

} // namespace Varnel::Lib
