#include <varnellib/native/textmeasure.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace Varnel::Lib {

std::vector<int> measureTextPrefixes(WindowHandle widget, const String& fontDescription,
                                     std::wstring_view text) {
    auto* gtkWidget = static_cast<GtkWidget*>(widget.native());
    if (!gtkWidget || !GTK_IS_WIDGET(gtkWidget) || text.empty())
        return {};
    // The UTF-8 text, with where each character's bytes begin (every byte but a continuation
    // byte, 10xxxxxx, begins one).
    const std::string utf8(String(text).toUtf8().view());
    std::vector<int> byteStarts;
    byteStarts.reserve(text.size());
    for (std::size_t byte = 0; byte < utf8.size(); ++byte)
        if ((static_cast<unsigned char>(utf8[byte]) & 0xC0) != 0x80)
            byteStarts.push_back(static_cast<int>(byte));
    if (byteStarts.size() != text.size())
        return {}; // characters the encoding could not keep one for one: no estimates

    std::unique_ptr<PangoLayout, decltype(&g_object_unref)> layout(
        gtk_widget_create_pango_layout(gtkWidget, nullptr), &g_object_unref);
    std::unique_ptr<PangoFontDescription, decltype(&pango_font_description_free)> font(
        pango_font_description_from_string(fontDescription.toUtf8().data()),
        &pango_font_description_free);
    pango_layout_set_font_description(layout.get(), font.get());
    pango_layout_set_text(layout.get(), utf8.data(), static_cast<int>(utf8.size()));

    // The clusters in order, from the glyphs of the one line: where each begins (a byte index)
    // and where its right edge lies. Walking the glyphs is linear; the layout's cluster iterator
    // measures each cluster from the start of its run again. Right-to-left runs give no
    // estimates: their clusters do not run in the order of the characters.
    std::vector<std::pair<int, int>> clusters;
    PangoLayoutLine* line = pango_layout_get_line_readonly(layout.get(), 0);
    int x = 0;
    for (GSList* run = line ? line->runs : nullptr; run; run = run->next) {
        const auto* glyphs = static_cast<PangoGlyphItem*>(run->data);
        if (glyphs->item->analysis.level % 2 != 0)
            return {};
        for (int glyph = 0; glyph < glyphs->glyphs->num_glyphs; ++glyph) {
            x += glyphs->glyphs->glyphs[glyph].geometry.width;
            const int start = glyphs->item->offset + glyphs->glyphs->log_clusters[glyph];
            if (!clusters.empty() && clusters.back().first == start)
                clusters.back().second = PANGO_PIXELS(x);
            else
                clusters.emplace_back(start, PANGO_PIXELS(x));
        }
    }
    if (clusters.empty())
        return {};
    std::sort(clusters.begin(), clusters.end());

    // Each character ends where the cluster holding its first byte ends; widths never go back.
    std::vector<int> widths(text.size(), 0);
    std::size_t current = 0;
    int widest = 0;
    for (std::size_t character = 0; character < text.size(); ++character) {
        while (current + 1 < clusters.size() &&
               clusters[current + 1].first <= byteStarts[character])
            ++current;
        widest = std::max(widest, clusters[current].second);
        widths[character] = widest;
    }
    return widths;
}

} // namespace Varnel::Lib
