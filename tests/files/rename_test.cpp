// Files are set aside under names that nobody has.
#include "desktop/files/rename.h"

#include <gtest/gtest.h>

#include "tests/files/folder.h"

namespace {

using files_tests::contentOf;
using files_tests::Folder;

TEST(SetAside, takesTheFirstFreeNameAndWhatStandsBesideAlong) {
    const Folder folder;
    folder.write("calls.db.damaged-1", "earlier");
    // A link that leads nowhere takes its name too.
    std::filesystem::create_symlink("nowhere", folder.file("calls.db.damaged-2"));
    folder.write("calls.db", "damaged");
    folder.write("calls.db-wal", "its log");
    static constexpr const char* beside[] = {"-wal", "-shm"};
    const auto aside = files::setAside(folder.file("calls.db"), beside);
    ASSERT_TRUE(std::holds_alternative<std::filesystem::path>(aside));
    EXPECT_EQ(std::get<std::filesystem::path>(aside), folder.file("calls.db.damaged-3"));
    EXPECT_EQ(contentOf(folder.file("calls.db.damaged-3")), "damaged");
    EXPECT_EQ(contentOf(folder.file("calls.db.damaged-3-wal")), "its log");
    EXPECT_EQ(contentOf(folder.file("calls.db.damaged-1")), "earlier");
    EXPECT_FALSE(std::filesystem::exists(folder.file("calls.db")));
}

TEST(RenameOnDisk, replacesOnlyWhenAsked) {
    const Folder folder;
    folder.write("one", "1");
    folder.write("two", "2");
    EXPECT_EQ(files::renameOnDisk(folder.file("one"), folder.file("two"), files::Existing::refused),
              std::errc::file_exists);
    EXPECT_EQ(contentOf(folder.file("two")), "2");
    EXPECT_EQ(files::renameOnDisk(folder.file("one"), folder.file("two"), files::Existing::replaced),
              std::error_code());
    EXPECT_EQ(contentOf(folder.file("two")), "1");
}

}  // namespace
