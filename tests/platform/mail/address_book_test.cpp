// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/book/address_book.h"

#include <gtest/gtest.h>

#include "platform/mail/base/mail_errors.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace {

class Book : public testing::Test {
 public:
    mailer::AddressBook Read(const std::string& cards) {
        WriteBytes(m_folder / "book.vcf", cards);
        return mailer::AddressBook(m_folder / "book.vcf");
    }
    static std::string Card(const std::string& name, const std::string& address,
                            const std::string& more = {}) {
        return "BEGIN:VCARD\nFN:" + name + "\nEMAIL:" + address + "\n" + more + "END:VCARD\n";
    }

 protected:
    TemporaryFolder m_folder;
};

}  // namespace

TEST_F(Book, FindsNamesAndNicknamesInAnyCase) {
    auto book = Read(Card("Änne Archer", "ann@b.c", "NICKNAME:Boss\n") + Card("Bob", "bob@b.c"));
    EXPECT_EQ(book.Resolve("äNNE archer"), (mailer::Mailbox{"Änne Archer", "ann@b.c"}));
    EXPECT_EQ(book.Resolve(" boss ").address, "ann@b.c");
    EXPECT_EQ(NumberRaisedBy([&] { book.Resolve("Änne"); }), mailer::ErrUnknownRecipient);
}

TEST_F(Book, NameThatStandsTwiceIsRefusedUnlessItIsTheSameAddress) {
    auto book = Read(Card("Twin", "one@b.c") + Card("Twin", "two@b.c") + Card("Same", "s@b.c") +
                     Card("Same", "s@B.C"));
    EXPECT_EQ(NumberRaisedBy([&] { book.Resolve("Twin"); }), mailer::ErrAmbiguousRecipient);
    EXPECT_NE(DescriptionRaisedBy([&] { book.Resolve("Twin"); }).find("\"Twin\""), std::string::npos);
    EXPECT_EQ(book.Resolve("Same").name, "Same");
}

TEST_F(Book, SeparatorAfterASingleNameIsNoPartOfIt) {
    auto book = Read(Card("Ann", "ann@b.c"));
    EXPECT_EQ(book.Resolve("ann;").address, "ann@b.c");
    EXPECT_EQ(book.Resolve("boss@b.c; ").address, "boss@b.c");
    EXPECT_EQ(NumberRaisedBy([&] { book.Resolve(";"); }), mailer::ErrUnknownRecipient);
    EXPECT_NE(NumberRaisedBy([&] { book.Resolve("a@b.c;d@b.c"); }), 0);
}

// Lists of recipients lose the mark ' when they are stored.
TEST_F(Book, NameWithAMarkIsFoundWithAndWithoutIt) {
    auto book = Read(Card("Sean O'Brien", "sean@b.c", "NICKNAME:D'Artagnan\n"));
    EXPECT_EQ(book.Resolve("Sean OBrien"), (mailer::Mailbox{"Sean O'Brien", "sean@b.c"}));
    EXPECT_EQ(book.Resolve("Sean O'Brien").address, "sean@b.c");
    EXPECT_EQ(book.Resolve("DARTAGNAN").address, "sean@b.c");
}

TEST_F(Book, NamesThatDifferByAMarkAloneAreNotGuessed) {
    auto book = Read(Card("Dana O'Neal", "one@b.c") + Card("Dana ONeal", "two@b.c"));
    EXPECT_EQ(NumberRaisedBy([&] { book.Resolve("Dana ONeal"); }), mailer::ErrAmbiguousRecipient);
}

TEST_F(Book, AddressesNeedNoBook) {
    mailer::AddressBook book(m_folder / "missing.vcf");
    EXPECT_EQ(book.Resolve("Ann <ann@b.c>").address, "ann@b.c");
    EXPECT_EQ(NumberRaisedBy([&] { book.Resolve("Ann"); }), err::FileNotFound);
    EXPECT_NE(DescriptionRaisedBy([&] { book.Resolve("Ann"); }).find("missing.vcf"), std::string::npos);
}

TEST_F(Book, EntriesAreSortedByName) {
    auto book = Read(Card("zoe", "z@b.c") + Card("Ann", "a@b.c") + Card("bob", "b@b.c"));
    std::vector<std::string> names;
    for (const auto& entry : book.ListEntries()) {
        names.push_back(entry.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Ann", "bob", "zoe"}));
}
