// The disk's errors, as the File Manager reports them.
#include <cerrno>

#include "files/linuxfile.h"
#include "support/toolbox_test.h"

using toolbox::files::Aim;
using toolbox::files::errorOf;

TEST(FileErrors, OfTheDiskHaveTheirOwnCodes)
{
    const std::pair<int, OSErr> known[] = {
        {0, noErr},           {ENOSPC, dskFulErr},     {EDQUOT, dskFulErr},   {EFBIG, dskFulErr},
        {ENOENT, fnfErr},     {EISDIR, fnfErr},        {ELOOP, fnfErr},       {ENOTDIR, dirNFErr},
        {EEXIST, dupFNErr},   {EROFS, wPrErr},         {ENOTEMPTY, fBsyErr},  {EBUSY, fBsyErr},
        {EAGAIN, fBsyErr},    {EDEADLK, fBsyErr},      {ETXTBSY, opWrErr},    {EBADF, rfNumErr},
        {EINVAL, paramErr},   {EOVERFLOW, paramErr},   {ENOSYS, paramErr},    {ESPIPE, posErr},
        {EMFILE, tmfoErr},    {ENFILE, tmfoErr},       {ENOMEM, memFullErr},  {ENAMETOOLONG, bdNamErr},
        {EILSEQ, bdNamErr},   {EXDEV, badMovErr},      {ENODEV, nsvErr},      {ENXIO, nsvErr},
        {ESTALE, volOffLinErr}, {ETIMEDOUT, volOffLinErr}, {EIO, ioErr},      {ECHILD, ioErr}};
    for (auto [number, error] : known)
        for (Aim aim : {Aim::open, Aim::change})
            EXPECT_EQ(errorOf(number, aim), error) << "errno " << number;
}

TEST(FileErrors, ForLackOfRightsSayWhatWasTried)
{
    EXPECT_EQ(errorOf(EACCES, Aim::open), permErr);
    EXPECT_EQ(errorOf(EACCES, Aim::change), wrPermErr);
    EXPECT_EQ(errorOf(EPERM, Aim::open), permErr);
    EXPECT_EQ(errorOf(EPERM, Aim::change), fLckdErr);
}

TEST(FileErrors, ForWhatIsMissingDistinguishFolderAndFile)
{
    TemporaryFolder folder;
    EXPECT_EQ(errorOf(ENOENT, Aim::open, folder / "file"), fnfErr);
    EXPECT_EQ(errorOf(ENOENT, Aim::open, folder / "gone/file"), dirNFErr);
}
