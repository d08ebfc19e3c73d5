// SPDX-License-Identifier: GPL-3.0-or-later
// The least work for a PDF of the rows: each cell is a rectangle and a text at a known position, without
// measuring, evaluation or layout.
//
// usage: bench_libharu_table DATABASE OUT
#include <hpdf.h>
#include <sqlite3.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>

namespace {

constexpr float Centimetre = 72 / 2.54F;
constexpr float PageWidth = 21 * Centimetre;
constexpr float PageHeight = 29.7F * Centimetre;
constexpr float Left = 2 * Centimetre;
constexpr float Top = PageHeight - 2.5F * Centimetre;
constexpr float Bottom = 1.5F * Centimetre;
constexpr std::array Widths = {2 * Centimetre, 2.7F * Centimetre, 2.3F * Centimetre,
                               4 * Centimetre, 2.2F * Centimetre, 3 * Centimetre};
constexpr float RowHeight = 0.48F * Centimetre;

// Embeds the font as oxc-report does. Without the font file it uses a built-in font, which is less work.
HPDF_Font FontOf(HPDF_Doc document) {
    const char* const file = "/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf";
    if (!std::filesystem::exists(file)) {
        return HPDF_GetFont(document, "Helvetica", nullptr);
    }
    return HPDF_GetFont(document, HPDF_LoadTTFontFromFile(document, file, HPDF_TRUE), "WinAnsiEncoding");
}

class Table {
 public:
    Table(HPDF_Doc document, sqlite3_stmt* rows)
        : document_(document), font_(FontOf(document)), rows_(rows) {}

    void Draw() {
        while (sqlite3_step(rows_) == SQLITE_ROW) {
            if (!page_ || y_ - RowHeight < Bottom) {
                BeginPage();
            }
            DrawRow([&](int column) {
                return reinterpret_cast<const char*>(sqlite3_column_text(rows_, column));
            });
        }
    }

 private:
    void BeginPage() {
        page_ = HPDF_AddPage(document_);
        HPDF_Page_SetWidth(page_, PageWidth);
        HPDF_Page_SetHeight(page_, PageHeight);
        HPDF_Page_SetRGBStroke(page_, 0.75F, 0.75F, 0.75F);
        HPDF_Page_SetFontAndSize(page_, font_, 9);
        DrawText(Left, PageHeight - 1.9F * Centimetre, ("Page " + std::to_string(++number_)).c_str());
        y_ = Top;
        DrawRow([&](int column) { return sqlite3_column_name(rows_, column); });
    }

    template <typename TextOfColumn>
    void DrawRow(const TextOfColumn& text) {
        y_ -= RowHeight;
        float x = Left;
        for (std::size_t column = 0; column < Widths.size(); ++column) {
            HPDF_Page_Rectangle(page_, x, y_, Widths[column], RowHeight);
            HPDF_Page_Stroke(page_);
            DrawText(x + 2, y_ + 4, text(static_cast<int>(column)));
            x += Widths[column];
        }
    }

    void DrawText(float x, float y, const char* text) {
        HPDF_Page_BeginText(page_);
        HPDF_Page_TextOut(page_, x, y, text);
        HPDF_Page_EndText(page_);
    }

    HPDF_Doc document_;
    HPDF_Font font_;
    sqlite3_stmt* rows_;
    HPDF_Page page_ = nullptr;
    float y_ = 0;
    int number_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    sqlite3* connection = nullptr;
    sqlite3_stmt* rows = nullptr;
    if (argc != 3 || sqlite3_open(argv[1], &connection) != SQLITE_OK ||
        sqlite3_prepare_v2(connection, "select * from Orders", -1, &rows, nullptr) != SQLITE_OK) {
        std::fputs("usage: bench_libharu_table DATABASE OUT\n", stderr);
        return 2;
    }
    HPDF_Doc document = HPDF_New(nullptr, nullptr);
    HPDF_SetCompressionMode(document, HPDF_COMP_ALL);
    Table(document, rows).Draw();
    const bool isSaved = HPDF_SaveToFile(document, argv[2]) == HPDF_OK;
    HPDF_Free(document);
    sqlite3_finalize(rows);
    sqlite3_close(connection);
    return isSaved ? 0 : 1;
}
