#pragma once
// MUserData: the base of data a plug-in hands to Maya to keep for it, such as what a draw
// override's prepareForDraw returns. The host owns such data: it deletes it when the
// override returns other data, when the override goes, or, for data made with
// deleteAfterUse true, right after the frame that used it.

class MUserData {
public:
    MUserData();
    explicit MUserData(bool deleteAfterUse);
    virtual ~MUserData();

    bool deleteAfterUse();
    void setDeleteAfterUse(bool shouldDelete);

    static const char* className();

private:
    bool fDeleteAfterUse;
};
