#!/bin/sh
# Runs tools/try-example.sh with a CMake that builds nothing, and does what it says at its end.
#   try_example.sh PROJECT VELKSTEP
set -eu
project=$1 velkstep=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/bin" "$scratch/my clone/tools"
cp "$project/tools/try-example.sh" "$scratch/my clone/tools/"
cp -r "$project/examples" "$scratch/my clone/"
printf '#!/bin/sh\n' > "$scratch/my clone/tools/install-packages.sh"
cat > "$scratch/bin/cmake" << END
#!/bin/sh
if [ "\$1" = --build ]; then mkdir -p "\$2/bin" && ln -s "$velkstep" "\$2/bin/velkstep"; fi
END
chmod +x "$scratch/bin/cmake" "$scratch/my clone/tools/"*
PATH=$scratch/bin:/usr/bin:/bin
cd "$scratch/my clone"
sh tools/try-example.sh > ../printed
ls example-out/*.stp > /dev/null
# The last line is what to type; then there is a velkstep, from elsewhere, too.
tail -n 1 ../printed > ../typed
cd /
. "$scratch/typed"
velkstep --version
[ "$(command -v velkstep)" = "$scratch/my clone/build-example/bin/velkstep" ]
