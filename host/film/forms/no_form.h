// Plates that are written nowhere: they are only looked at.
#pragma once

#include <memory>

#include "film/forms/plate_writer.h"

namespace riders::film {

class NoForm : public Form {
public:
    std::unique_ptr<PlateWriter> plate(const PlateSheet &) override { return std::make_unique<Nowhere>(); }
    void finish() override {}

private:
    class Nowhere : public PlateWriter {
    public:
        void row(const std::uint8_t *) override {}
        void end() override {}
    };
};

}  // namespace riders::film
