// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/animation.h"

#include "platform/base/paths.h"
#include "shown_form.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace {

std::string Number(std::uint32_t number, int size = 4) {
    std::string bytes;
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(number >> 8 * i & 0xff);
    }
    return bytes;
}

std::string Chunk(const std::string& kind, const std::string& data) {
    return kind + Number(static_cast<std::uint32_t>(data.size())) + data + std::string(data.size() % 2, '\0');
}

// A film of 2 x 1 pixels. A test may replace each part.
struct Film {
    std::uint32_t width = 2, height = 1, bits = 24, compression = 0, scale = 1, rate = 50;
    std::string palette{}, before{};
    std::vector<std::string> frames = {std::string("\0\0\xff\0\xff\0\0\0", 8),       // red, green
                                       std::string("\xff\0\0\xff\xff\xff\0\0", 8)};  // blue, white

    std::string Bytes() const {
        const std::string head =
            "vids" + std::string(16, '\0') + Number(scale) + Number(rate) + std::string(28, '\0');
        const std::string format = Number(40) + Number(width) + Number(height) + Number(1, 2) +
                                   Number(bits, 2) + Number(compression) + std::string(12, '\0') +
                                   Number(static_cast<std::uint32_t>(palette.size() / 4)) + Number(0) +
                                   palette;
        std::string movie = "movi";
        for (const std::string& frame : frames) {
            movie += Chunk("00db", frame);
        }
        return Chunk("RIFF", "AVI " +
                                 Chunk("LIST", "hdrl" + Chunk("avih", Number(40000) + std::string(52, '\0')) +
                                                   Chunk("LIST", "strl" + Chunk("strh", head) +
                                                                     Chunk("strf", format))) +
                                 before + Chunk("LIST", movie));
    }
};

std::vector<std::uint32_t> FrameOf(const Film& film, int number) {
    return AviFile(film.Bytes()).Frame(number);
}

std::string RefusalOf(const std::string& bytes) {
    EXPECT_EQ(NumberRaisedBy([&] { AviFile file(bytes); }), 35752);
    return DescriptionRaisedBy([&] { AviFile file(bytes); });
}

using Pixels = std::vector<std::uint32_t>;

class PlayedFilm : public testing::Test {
 protected:
    void SetUp() override {
        WriteBytes(m_folder / "film.avi", Film().Bytes());
        form.Show(&film);
        film.setFixedSize(40, 30);
        QApplication::processEvents();
    }
    std::string Of(const char* name) { return paths::FromMachine(m_folder / name); }
    QColor At(int x, int y) { return film.grab().toImage().pixelColor(x, y); }
    // Returns true if the picture that begins with this colour appears within a second.
    bool Comes(const QColor& colour) {
        return QTest::qWaitFor([&] { return At(1, 15) == colour; }, 1000);
    }

    TemporaryFolder m_folder;
    ShownForm form;
    Animation film;
};

}  // namespace

TEST(Film, OfEachDepthHasItsColours) {
    Film film;
    EXPECT_EQ(FrameOf(film, 0), (Pixels{0xffff0000, 0xff00ff00}));
    EXPECT_EQ(FrameOf(film, 1), (Pixels{0xff0000ff, 0xffffffff}));
    film.bits = 32;
    EXPECT_EQ(FrameOf({.bits = 32, .frames = {std::string("\0\0\xff\0\0\xff\0\0", 8)}}, 0),
              (Pixels{0xffff0000, 0xff00ff00}));
    Film small{.bits = 8, .frames = {std::string("\1\0\0\0", 4)}};
    small.palette = Number(0x123456) + Number(0x00abcdef);
    EXPECT_EQ(FrameOf(small, 0), (Pixels{0xffabcdef, 0xff123456}));
}

TEST(Film, RowsStandFromTheBottomUpOrFromTheTopDown) {
    const std::string rows = std::string("\1\0\0\0", 4) + std::string("\2\0\0\0", 4);
    EXPECT_EQ(FrameOf({.width = 1, .height = 2, .frames = {rows}}, 0), (Pixels{0xff000002, 0xff000001}));
    EXPECT_EQ(FrameOf({.width = 1, .height = static_cast<std::uint32_t>(-2), .frames = {rows}}, 0),
              (Pixels{0xff000001, 0xff000002}));
}

TEST(Film, FrameTimeIsTheStreamsOwnElseTheFilesAndNeverNone) {
    using std::chrono::milliseconds;
    EXPECT_EQ(AviFile(Film().Bytes()).FrameTime(), milliseconds(20));
    EXPECT_EQ(AviFile(Film{.rate = 0}.Bytes()).FrameTime(), milliseconds(40));
    EXPECT_EQ(AviFile(Film{.rate = 0xffffffff}.Bytes()).FrameTime(), milliseconds(10));
    EXPECT_EQ(AviFile(Film{.scale = 0xffffffff, .rate = 1}.Bytes()).FrameTime(), milliseconds(10000));
}

TEST(Film, EmptyFrameRepeatsTheOneBefore) {
    Film film;
    film.frames = {"", film.frames[0], "", film.frames[1]};
    const AviFile file(film.Bytes());
    ASSERT_EQ(file.FrameCount(), 3);
    EXPECT_EQ(file.Frame(1), file.Frame(0));
}

TEST(Film, PartsThatAreNotKnownArePassedOver) {
    Film film;
    film.before = Chunk("JUNK", "odd") + Chunk("LIST", "INFO" + Chunk("ISFT", "some"));
    EXPECT_EQ(AviFile(film.Bytes()).FrameCount(), 2);
}

TEST(Film, OfAnotherKindIsRefusedByName) {
    EXPECT_EQ(RefusalOf(""), "The file is not an animation");
    EXPECT_EQ(RefusalOf(Chunk("RIFF", "WAVE")), "The file is not an animation");
    EXPECT_EQ(RefusalOf(Film{.frames = {}}.Bytes()), "The animation has no pictures");
    const char* compressed =
        "The animation is compressed; only pictures of 8, 24 or 32 bits as they are can be shown";
    EXPECT_EQ(RefusalOf(Film{.compression = 1}.Bytes()), compressed);
    EXPECT_EQ(RefusalOf(Film{.bits = 16}.Bytes()), compressed);
}

TEST(Film, SizesThatCannotBeAreRefused) {
    const char* size = "The pictures of the animation are empty or too large";
    for (const std::uint32_t side : {0U, 4097U, 0x80000000U}) {
        EXPECT_EQ(RefusalOf(Film{.height = side}.Bytes()), size) << side;
        EXPECT_EQ(RefusalOf(Film{.width = side}.Bytes()), size) << side;
    }
    EXPECT_EQ(RefusalOf(Film{.height = 2}.Bytes()),
              "The animation is damaged: one of its pictures is too short");
}

TEST(Film, CutOffAnywhereIsRefused) {
    const std::string whole = Film().Bytes();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(RefusalOf(whole.substr(0, length)).empty()) << length;
    }
}

TEST(Film, DamagedAnywhereIsReadOrRefused) {
    const std::string whole = Film().Bytes();
    for (std::size_t place = 0; place < whole.size(); ++place) {
        for (const char damage : {'\0', '\x7f', '\xff'}) {
            std::string bytes = whole;
            bytes[place] = damage;
            try {
                const AviFile file(bytes);
                for (int frame = 0; frame < file.FrameCount(); ++frame) {
                    EXPECT_EQ(file.Frame(frame).size(), static_cast<std::size_t>(file.Width()) *
                                                            static_cast<std::size_t>(file.Height()));
                }
            } catch (const RuntimeError& error) {
                EXPECT_EQ(error.Number(), 35752) << place;
            }
        }
    }
}

TEST_F(PlayedFilm, OpensAtItsFirstPictureAndStandsStill) {
    film.Open(Of("film.avi"));
    QTest::qWait(50);
    EXPECT_EQ(At(1, 15), QColor(Qt::red));
    EXPECT_EQ(At(38, 15), QColor(Qt::green));
    EXPECT_EQ(film.sizeHint(), QSize(2, 1));
}

TEST_F(PlayedFilm, IsEnlargedByWholePixels) {
    film.Open(Of("film.avi"));
    EXPECT_EQ(At(19, 15), QColor(Qt::red));
    EXPECT_EQ(At(20, 15), QColor(Qt::green));
}

TEST_F(PlayedFilm, PlaysOverAndOverUntilItIsStopped) {
    film.Open(Of("film.avi"));
    film.Play();
    EXPECT_TRUE(Comes(Qt::blue));
    EXPECT_TRUE(Comes(Qt::red));
    EXPECT_TRUE(Comes(Qt::blue));
    film.Stop();
    QTest::qWait(50);
    EXPECT_EQ(At(1, 15), QColor(Qt::blue));
}

TEST_F(PlayedFilm, PlaysByItselfWhenItIsToldTo) {
    film.AutoPlay(true);
    film.Open(Of("film.avi"));
    EXPECT_TRUE(Comes(Qt::blue));
}

TEST_F(PlayedFilm, ClosedShowsNothing) {
    film.Open(Of("film.avi"));
    film.Play();
    film.Close();
    EXPECT_EQ(At(1, 15), form.palette().color(QPalette::Window));
    EXPECT_EQ(NumberRaisedBy([this] { film.Play(); }), 91);
}

TEST_F(PlayedFilm, FileThatCannotBeOpenedRaises) {
    EXPECT_EQ(NumberRaisedBy([this] { film.Open(Of("none.avi")); }), 53);
    EXPECT_EQ(NumberRaisedBy([this] { film.Open(Of("none\\none.avi")); }), 76);
    EXPECT_EQ(NumberRaisedBy([this] { film.Open("Q:\\back.avi"); }), 76);
    WriteBytes(m_folder / "text.avi", "text");
    EXPECT_EQ(NumberRaisedBy([this] { film.Open(Of("text.avi")); }), 35752);
}

#ifdef OXC_ANIMATION
TEST_F(PlayedFilm, SystemsOwnIsASmallFilmOfTwoSeconds) {
    const std::string bytes = ReadBytes(OXC_ANIMATION);
    EXPECT_LT(bytes.size(), 1500000U);
    const AviFile own(bytes);
    EXPECT_EQ(own.Width(), 272);
    EXPECT_EQ(own.Height(), 60);
    EXPECT_EQ(own.FrameCount(), 24);
    EXPECT_NE(own.Frame(0), own.Frame(12));
    EXPECT_EQ(own.FrameTime() / std::chrono::milliseconds(1), 83);
}
#endif
