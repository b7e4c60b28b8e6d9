// The side of the libraries in accuracy.py: vela_accuracy RESULTS. The first two lines of that file
// have the names and the versions of the implementations; then each line of the standard input, a
// function, a point and its parameters, is answered by one result of each implementation, "-" where
// it lacks the function. A file, because peers print their warnings on the standard output.

#include "functions.hpp"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using bench::Implementation;

double number(std::istream& words) {
    std::string word;  // a stream reads no hexadecimal floating-point numbers
    words >> word;
    return std::strtod(word.c_str(), nullptr);
}

double evaluate(const bench::PointFunction& function, double x, const bench::Parameters& p) {
    try {
        return function.scalar(x, p);
    } catch (const std::exception&) {
        return NAN;
    }
}

void answer(std::FILE* out, const std::vector<const Implementation*>& all,
            const std::string& line) {
    std::istringstream words(line);
    std::string name;
    words >> name;
    const double x = number(words);
    bench::Parameters p = {};
    for (double& parameter : p) {
        parameter = number(words);
    }
    for (const Implementation* implementation : all) {
        const bench::PointFunction* function = implementation->find_point(name);
        function == nullptr ? std::fprintf(out, "- ")
                            : std::fprintf(out, "%a ", evaluate(*function, x, p));
    }
    std::fprintf(out, "\n");
}

}  // namespace

int main(int argc, char** argv) {
    std::FILE* out = argc == 2 ? std::fopen(argv[1], "w") : nullptr;
    if (out == nullptr) {
        std::fprintf(stderr, "usage: vela_accuracy RESULTS <POINTS\n");
        return 1;
    }
    std::vector<const Implementation*> all = {&bench::ours()};
    for (const Implementation& peer : bench::peers()) {
        all.push_back(&peer);
    }
    for (const Implementation* implementation : all) {
        std::fprintf(out, "%s ", implementation->name);
    }
    std::fprintf(out, "\n");
    for (const Implementation* implementation : all) {
        std::fprintf(out, "%s ",
                     implementation->version.empty() ? "-" : implementation->version.c_str());
    }
    std::fprintf(out, "\n");
    for (std::string line; std::getline(std::cin, line);) {
        answer(out, all, line);
    }
    return std::fclose(out);
}
