{
  description = "Battery item for the panel of a laptop";

  inputs.nixpkgs.url = "github:NixOS/nixpkgs/nixos-unstable";

  outputs = { self, nixpkgs }:
    let
      lumowatt = { lib, stdenv, cmake, ninja, pkg-config, cairo, fontconfig, gtest, libpng, nlohmann_json
        , pango, systemdLibs }:
        stdenv.mkDerivation {
          pname = "lumowatt";
          version = builtins.head (builtins.match ".*\nproject\\(lumowatt VERSION ([0-9.]+) .*"
            (builtins.readFile ../CMakeLists.txt));
          src = ../.;
          nativeBuildInputs = [ cmake ninja pkg-config ];
          buildInputs = [ cairo fontconfig libpng pango systemdLibs ];
          checkInputs = [ gtest nlohmann_json ];
          doCheck = true;
          cmakeFlags = [
            "-DCMAKE_UNITY_BUILD=ON"
            "-DLUMOWATT_PROGRAM_TESTS=OFF"
            "-DLUMOWATT_STATIC_RUNTIME=OFF"
            "-DLUMOWATT_UNIT_FOLDER=lib/systemd/user"
          ];
          meta = {
            description = "Battery item for the panel of a laptop";
            homepage = "https://fernhollow.com";
            license = lib.licenses.mit;
            mainProgram = "lumowatt";
            platforms = lib.platforms.linux;
          };
        };
      systems = [ "x86_64-linux" "aarch64-linux" ];
    in {
      packages = nixpkgs.lib.genAttrs systems (system: {
        default = nixpkgs.legacyPackages.${system}.callPackage lumowatt { };
      });
      overlays.default = final: prev: { lumowatt = final.callPackage lumowatt { }; };
    };
}
